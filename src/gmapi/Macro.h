#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace corvane {

class GMUI;

// Evaluates GoldMine macros and field expressions such as "&Version" or "Contact1->AccountNo".
class Macro {
public:
    explicit Macro(GMUI& gmui) : gmui_(gmui) {}

    // The macro's value; nothing when GoldMine does not answer with success.
    [[nodiscard]] std::optional<std::wstring> Value(std::wstring_view name);

    [[nodiscard]] std::optional<std::wstring> Version() { return Value(L"&Version"); }
    [[nodiscard]] std::optional<std::wstring> ProgramDataDir() { return Value(L"&ProgramDataDir"); }
    [[nodiscard]] std::optional<std::wstring> SysDir() { return Value(L"&SysDir"); }
    // The open record's account; nothing as well when it is empty, which is no account.
    [[nodiscard]] std::optional<std::wstring> AccountNo();
    [[nodiscard]] std::optional<std::wstring> UserName() { return Value(L"&UserName"); }
    // One item of GoldMine's system information; the name goes into the expression as given. Asked
    // for by no one yet: it makes the macros whole.
    [[nodiscard]] std::optional<std::wstring> SysInfo(std::wstring_view itemName);

private:
    // The reply, when it is a success.
    [[nodiscard]] std::optional<std::wstring> Run(std::wstring_view name);

    GMUI& gmui_;
};

}  // namespace corvane
