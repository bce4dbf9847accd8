#include "data/Database.h"

#include <windows.h>

#include <algorithm>
#include <cstdint>
#include <utility>

#include "data/SampleContacts.h"
#include "shared/Text.h"
#include "sqlite3.h"

namespace practice {
namespace {

constexpr std::size_t mostRows = 100'000;
constexpr int busyMilliseconds = 5000;

struct StatementCloser {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Statement = std::unique_ptr<sqlite3_stmt, StatementCloser>;

std::wstring ColumnText(sqlite3_stmt* statement, int column) {
    const auto* text = static_cast<const wchar_t*>(sqlite3_column_text16(statement, column));
    const int bytes = sqlite3_column_bytes16(statement, column);
    return text ? std::wstring(text, static_cast<std::size_t>(bytes) / sizeof(wchar_t))
                : std::wstring();
}

// GoldMine's record ids are no numbers: letters, digits and signs. The letter in front keeps every
// reader of numbers from taking one for a number.
std::wstring RecordId(std::uint64_t number, bool numeric) {
    constexpr std::wstring_view signs = L"0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    if (numeric) {
        const std::wstring digits = std::to_wstring(number);
        return L"7" + std::wstring(14 - std::min<std::size_t>(digits.size(), 14), L'0') + digits;
    }
    std::wstring tail;
    for (std::uint64_t rest = number * 2'654'435'761u; tail.size() < 8; rest /= signs.size())
        tail.insert(tail.begin(), signs[static_cast<std::size_t>(rest % signs.size())]);
    return L"HK4Q$1&" + tail;
}

}  // namespace

std::wstring DatabaseError::Message() const {
    return FromUtf8(what());
}

Database::Database(const std::wstring& file, bool fresh) {
    if (fresh && !DeleteFileW(file.c_str()) && GetLastError() != ERROR_FILE_NOT_FOUND)
        throw DatabaseError("The database is in use and cannot be made afresh.");
    const bool isNew = GetFileAttributesW(file.c_str()) == INVALID_FILE_ATTRIBUTES;
    sqlite3* handle = nullptr;  // there even when the file cannot be opened
    const int opened =
        sqlite3_open_v2(ToUtf8(file).c_str(), &handle,
                        SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX, nullptr);
    handle_.reset(handle);
    if (opened != SQLITE_OK)
        throw DatabaseError(sqlite3_errstr(opened));
    sqlite3_busy_timeout(handle_.get(), busyMilliseconds);
    // A practice database may be lost with the power; it must be quick.
    RunScript("PRAGMA synchronous=OFF; PRAGMA journal_mode=MEMORY;");
    if (isNew) {
        // Texts stay in UTF-16, so that one that comes in pieces is whole in the end: a piece may
        // end within a character.
        RunScript("PRAGMA encoding='UTF-16le';");
        RunScript(SampleContacts().c_str());
    }
}

void Database::Closer::operator()(sqlite3* handle) const {
    sqlite3_close(handle);
}

void Database::RunScript(const char* script) {
    if (sqlite3_exec(handle_.get(), script, nullptr, nullptr, nullptr) != SQLITE_OK)
        throw DatabaseError(sqlite3_errmsg(handle_.get()));
}

Table Database::Run(std::wstring_view sql, const Parameters& parameters) {
    return Run(sql, parameters, false);
}

Table Database::Query(std::wstring_view sql) {
    return Run(sql, {}, true);
}

Table Database::Run(std::wstring_view sql, const Parameters& parameters, bool readOnly) {
    const std::string text = ToUtf8(sql);
    sqlite3_stmt* prepared = nullptr;
    const char* tail = nullptr;
    if (sqlite3_prepare_v2(handle_.get(), text.c_str(), static_cast<int>(text.size()), &prepared,
                           &tail) != SQLITE_OK) {
        throw DatabaseError(sqlite3_errmsg(handle_.get()));
    }
    const Statement statement(prepared);
    if (!statement)
        throw DatabaseError("There is no SQL statement.");
    if (std::string_view(tail).find_first_not_of("; \t\r\n") != std::string_view::npos)
        throw DatabaseError("There is more than one SQL statement.");
    if (readOnly && sqlite3_stmt_readonly(statement.get()) == 0)
        throw DatabaseError("Only queries can be run.");
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        const std::wstring& value = parameters[i];
        sqlite3_bind_text16(statement.get(), static_cast<int>(i) + 1, value.data(),
                            static_cast<int>(value.size() * sizeof(wchar_t)), SQLITE_TRANSIENT);
    }

    Table table;
    const int columns = sqlite3_column_count(statement.get());
    for (int column = 0; column < columns; ++column)
        table.columns.push_back(FromUtf8(sqlite3_column_name(statement.get(), column)));
    int step = 0;
    while ((step = sqlite3_step(statement.get())) == SQLITE_ROW) {
        if (table.rows.size() == mostRows)
            throw DatabaseError("The query yields too many rows.");
        Row& row = table.rows.emplace_back();
        for (int column = 0; column < columns; ++column)
            row.push_back(ColumnText(statement.get(), column));
    }
    if (step != SQLITE_DONE)
        throw DatabaseError(sqlite3_errmsg(handle_.get()));
    return table;
}

std::optional<std::wstring> Database::Value(std::wstring_view sql, const Parameters& parameters) {
    const Table table = Run(sql, parameters);
    if (table.rows.empty() || table.rows.front().empty())
        return std::nullopt;
    return table.rows.front().front();
}

std::vector<Column> Database::Columns(std::wstring_view table) {
    std::vector<Column> columns;
    for (const Row& row :
         Run(L"select name, type from pragma_table_info(?)", {std::wstring(table)}).rows) {
        const std::size_t bracket = row[1].find(L'(');
        const bool limited = bracket != std::wstring::npos;
        const std::wstring width =
            limited ? row[1].substr(bracket + 1, row[1].size() - bracket - 2) : std::wstring();
        columns.push_back({row[0], static_cast<std::size_t>(ToNumber(width, 0))});
    }
    return columns;
}

void Database::SetField(std::wstring_view table, const Column& column, const std::wstring& recordId,
                        const std::wstring& text) {
    Run(L"update " + std::wstring(table) + L" set " + column.name + L" = ? where RecID = ?",
        {column.width == 0 ? text : text.substr(0, column.width), recordId});
}

std::wstring Database::InsertHistory(const History& history, bool numericId) {
    const long number =
        ToNumber(Value(L"select coalesce(max(rowid), 0) + 1 from ContHist").value_or(L""), 1);
    std::wstring recordId = RecordId(static_cast<std::uint64_t>(number), numericId);
    Run(L"insert into ContHist (RecID, OnDate, OnTime) values (?, date('now', 'localtime'), "
        L"strftime('%H:%M', 'now', 'localtime'))",
        {recordId});
    const std::vector<std::pair<std::wstring_view, const std::wstring*>> fields = {
        {L"UserID", &history.user},           {L"AccountNo", &history.account},
        {L"RecType", &history.recordType},    {L"ActvCode", &history.activity},
        {L"ResultCode", &history.resultCode}, {L"Duration", &history.duration},
        {L"Ref", &history.reference},         {L"Notes", &history.notes},
        {L"Private", &history.isPrivate},     {L"LOpRecID", &history.operatorRecordId},
    };
    const std::vector<Column> columns = Columns(L"ContHist");
    for (const auto& [name, text] : fields) {
        for (const Column& column : columns) {
            if (column.name == name)
                SetField(L"ContHist", column, recordId, *text);
        }
    }
    return recordId;
}

}  // namespace practice
