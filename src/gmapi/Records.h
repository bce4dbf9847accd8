#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace corvane {

class GMUI;

// A history item to insert; empty fields are sent empty.
struct HistoryItem {
    std::wstring AccNo;
    std::wstring Activity;
    std::wstring Duration;
    std::wstring OpRecID;
    std::wstring RecType;  // "CI" incoming call, "CO" outgoing call
    std::wstring Ref;
    std::wstring ResultCode;
    std::wstring Notes;
    std::wstring User;
    std::wstring Private;
};

// GoldMine's table work areas and its history. Each command's result is the reply's status value;
// nothing when the command failed, which the caller reports.
class Records {
public:
    using Result = std::optional<std::wstring>;

    explicit Records(GMUI& gmui) : gmui_(gmui) {}

    // The value is the area's handle; "0" means that the table was not opened.
    [[nodiscard]] Result Open(std::wstring_view filename);
    [[nodiscard]] Result Move(std::wstring_view area, std::wstring_view command,
                              std::wstring_view parameter);
    // Completes the set: the program writes records and reads none.
    [[nodiscard]] Result Read(std::wstring_view area, std::wstring_view field);
    [[nodiscard]] Result Replace(std::wstring_view area, std::wstring_view field,
                                 std::wstring_view newValue, bool append);
    [[nodiscard]] Result Unlock(std::wstring_view area);
    [[nodiscard]] Result Close(std::wstring_view area);
    // The value is the new record's identifier; a value of "0" is a failure.
    [[nodiscard]] Result InsHist(const HistoryItem& item);

private:
    using Arguments = std::initializer_list<std::pair<std::wstring_view, std::wstring_view>>;
    [[nodiscard]] Result Send(std::wstring_view call, Arguments arguments);

    GMUI& gmui_;
};

}  // namespace corvane
