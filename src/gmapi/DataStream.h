#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace corvane {

class Form;
class GMUI;
class MessageBoxes;
class StatusWriter;

// The text of fetched rows taken apart.
struct RawRows {
    std::wstring header;
    std::int32_t rowCount = 0;  // how many rows matched; only one was fetched
    std::wstring firstRow;      // empty when there is none
};

// Raises error 13 when the header's count is not a number.
[[nodiscard]] RawRows ParseRawReturn(std::wstring_view rawReturn);

// Runs SQL inside GoldMine. Failures show a message box and write the same text as a status line.
class DataStream {
public:
    DataStream(GMUI& gmui, Form& form, StatusWriter& status, MessageBoxes& boxes);

    // Nothing when the query failed or GoldMine gave no area for its rows; a query that matched no
    // row may also come back as a count of 0. Raises error 13 when the count is not a number.
    [[nodiscard]] std::optional<RawRows> RunQuery(std::wstring_view sql);

    // The first field of the row when exactly one row matched, otherwise nothing.
    [[nodiscard]] std::optional<std::wstring> FirstFieldOfQuery(std::wstring_view sql);

private:
    void ReportFailure(std::wstring_view text);

    GMUI& gmui_;
    Form& form_;
    StatusWriter& status_;
    MessageBoxes& boxes_;
};

}  // namespace corvane
