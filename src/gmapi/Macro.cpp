#include "gmapi/Macro.h"

#include "gmapi/Envelope.h"
#include "gmapi/GMUI.h"
#include "util/Text.h"

namespace corvane {

std::optional<std::wstring> Macro::Run(std::wstring_view name) {
    std::wstring reply = gmui_.GMUI_Execute(Command(L"Macro").Data(L"Macro", name).Text());
    if (!Succeeded(reply, L"Macro"))
        return std::nullopt;
    return reply;
}

std::optional<std::wstring> Macro::Value(std::wstring_view name) {
    const auto reply = Run(name);
    if (!reply)
        return std::nullopt;
    return gmui_.StatusValue(*reply);
}

std::optional<std::wstring> Macro::AccountNo() {
    auto account = Value(L"Contact1->AccountNo");
    if (account && TrimBlanks(*account).empty())
        account.reset();
    return account;
}

std::optional<std::wstring> Macro::SysInfo(std::wstring_view itemName) {
    const auto reply = Run(L"&SysInfo");
    if (!reply)
        return std::nullopt;
    return Unescape(gmui_.SelectNode(
        *reply, Join(L"/GMAPI[@call=\"Macro\"]/data[@name=\"System Information\"]//data[@name=\"",
                     itemName, L"\"]")));
}

}  // namespace corvane
