#include "commands/WindowCommands.h"

#include <optional>
#include <string>

#include "shared/Text.h"
#include "windows/WindowList.h"

namespace practice {

Answer RunCallerID(CallContext& context, const Command& command) {
    const std::wstring& phone = command.Argument(L"Phone");
    if (phone.empty())
        return Failure(command, L"There is no phone number to search for.");
    const bool all = command.Argument(L"All") == L"1";
    const auto account = context.database.Value(
        all ? L"select AccountNo from Contact1 where Phone1 = ?1 or Phone2 = ?1 or Phone3 = ?1 "
              L"order by rowid"
            : L"select AccountNo from Contact1 where Phone1 = ?1 order by rowid",
        {phone});
    if (!account)
        return Failure(command, L"Not found");
    if (command.Argument(L"DisplayDialog") == L"1")
        context.desk.ShowInNewWindow(*account);
    else if (command.Argument(L"DisplayDialog") == L"2")
        context.desk.ShowInCurrentWindow(*account);
    return Success(command, L"Success");
}

Answer RunStatusMsg(CallContext& context, const Command& command) {
    context.desk.ShowStatus(command.Argument(L"Message"), ToNumber(command.Argument(L"Delay"), 0));
    return Success(command, L"Success");
}

Answer RunRegisterWindowUpDown(CallContext& context, const Command& command) {
    const std::wstring& window = command.Argument(L"Window");
    if (window.empty())
        return Failure(command, L"There is no window name.");
    if (command.Argument(L"Monitor") == L"1")
        context.client.watchedWindows.insert(window);
    else
        context.client.watchedWindows.erase(window);
    return Success(command, L"Success");
}

Answer RunGetActiveWindowsList(CallContext&, const Command& command) {
    std::wstring windows;
    for (const ListedWindow& window : ListWindows()) {
        std::wstring controls;
        for (const ListedControl& control : window.controls) {
            controls += DataElement(L"control", DataValue(L"ID", std::to_wstring(control.id)) +
                                                    DataValue(L"Text", control.text));
        }
        windows += DataElement(L"window", DataValue(L"hWnd", std::to_wstring(window.handle)) +
                                              DataValue(L"Name", window.name) +
                                              DataElement(L"Controls", controls));
    }
    return Success(command, L"Success", DataElement(L"WindowsList", windows));
}

Answer RunSetControlText(CallContext&, const Command& command) {
    const long parent = ToNumber(command.Argument(L"hWndParent"), 0);
    const long id = ToNumber(command.Argument(L"ID"), 0);
    return SetListedControlText(parent, id, command.Argument(L"Text"))
               ? Success(command, L"Success")
               : Failure(command, L"There is no such control.");
}

Answer RunMenuCommand(CallContext& context, const Command& command) {
    const std::optional<CallKind> kind = CallKindOf(command.text);
    if (!kind)
        return Failure(command, L"Unknown menu command.");
    if (!context.desk.OpenCompleteCall(*kind, context.plan.eventTiming))
        return Failure(command, L"No contact record is open.");
    return Success(command, L"The command was executed.");
}

Answer RunPopCalHistItem(CallContext& context, const Command& command) {
    return context.desk.OpenHistoryItem(command.Argument(L"recID"))
               ? Success(command, L"Success")
               : Failure(command, L"There is no such history item.");
}

}  // namespace practice
