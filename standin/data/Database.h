#pragma once

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3;

namespace practice {

// An error of the database, with SQLite's message.
class DatabaseError : public std::runtime_error {
public:
    explicit DatabaseError(const std::string& message) : std::runtime_error(message) {}
    [[nodiscard]] std::wstring Message() const;
};

using Row = std::vector<std::wstring>;

struct Table {
    std::vector<std::wstring> columns;
    std::vector<Row> rows;
};

struct Column {
    std::wstring name;
    std::size_t width = 0;  // in characters; 0 means unlimited
};

// The contacts, their additional contacts and their history, in one SQLite file.
class Database {
public:
    using Parameters = std::vector<std::wstring>;

    // Opens the file; creates it with the sample contacts when it is missing or `fresh` is asked
    // for. Throws DatabaseError.
    Database(const std::wstring& file, bool fresh);
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    // Runs one statement and collects its rows. Throws DatabaseError: for errors of SQLite, for
    // more than one statement, for more rows than fit.
    Table Run(std::wstring_view sql, const Parameters& parameters = {});
    // The same for a statement that may only read.
    Table Query(std::wstring_view sql);
    // The first field of the first row.
    std::optional<std::wstring> Value(std::wstring_view sql, const Parameters& parameters = {});

    // The columns of one of the three tables.
    std::vector<Column> Columns(std::wstring_view table);
    // Puts the text into a field of a row, cut to the field's width.
    void SetField(std::wstring_view table, const Column& column, const std::wstring& recordId,
                  const std::wstring& text);

    struct History {
        std::wstring account, recordType, reference, notes, user;
        std::wstring activity, duration, resultCode, isPrivate, operatorRecordId;
    };
    // Adds a history row dated now. Answers its record id: 15 characters that are no number, or 15
    // digits when `numericId`.
    std::wstring InsertHistory(const History& history, bool numericId);

private:
    Table Run(std::wstring_view sql, const Parameters& parameters, bool readOnly);
    void RunScript(const char* script);

    struct Closer {
        void operator()(sqlite3* handle) const;
    };
    std::unique_ptr<sqlite3, Closer> handle_;
};

}  // namespace practice
