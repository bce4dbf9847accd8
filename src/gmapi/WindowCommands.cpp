#include "gmapi/WindowCommands.h"

#include "gmapi/Envelope.h"
#include "gmapi/GMUI.h"
#include "util/RuntimeError.h"
#include "util/Text.h"

namespace corvane {

namespace {

// The digit behind <GMAPI call="StatusMsg"><status code=" and its equally long RecordObj sister.
std::wstring StatusDigit(const std::wstring& reply) {
    constexpr std::size_t position = 38;
    return reply.size() > position ? reply.substr(position, 1) : std::wstring();
}

}  // namespace

bool WindowCommands::CallerID(std::wstring_view phone, ContactDisplay display, bool allPhones) {
    const std::wstring reply = gmui_.GMUI_Execute(
        Command(L"CallerID")
            .Data(L"Phone", phone)
            .Data(L"Description", L"")
            .Data(L"DisplayDialog", display == ContactDisplay::CurrentWindow ? L"2" : L"1")
            .Data(L"All", allPhones ? L"1" : L"0")
            .Data(L"UPhone", L"0")
            .Text());
    return Succeeded(reply, L"CallerID");
}

std::wstring WindowCommands::StatusMsg(std::wstring_view message, std::wstring_view delay) {
    Command command(L"StatusMsg");
    command.Data(L"Message", message);
    if (!TrimBlanks(delay).empty())
        command.Data(L"Delay", delay);
    return StatusDigit(gmui_.GMUI_Execute(command.Text()));
}

std::wstring WindowCommands::StatusMsg(std::wstring_view message, int delay) {
    return StatusMsg(message, std::to_wstring(delay));
}

std::wstring WindowCommands::RecordObj(std::wstring_view command, std::wstring_view argument) {
    Command recordObj(L"RecordObj");
    recordObj.Data(L"Command", command);
    if (!TrimBlanks(argument).empty())
        recordObj.Data(L"Argument", argument);
    return StatusDigit(gmui_.GMUI_Execute(recordObj.Text()));
}

bool WindowCommands::RegisterWindowUpDown(std::wstring_view window, bool monitor) {
    const std::wstring reply = gmui_.GMUI_Execute(Command(L"RegisterWindowUpDown")
                                                      .Data(L"Window", window)
                                                      .Data(L"Monitor", monitor ? L"1" : L"0")
                                                      .Text());
    return reply == SuccessReply(L"RegisterWindowUpDown", L"Success");
}

std::wstring WindowCommands::GetControlText(std::wstring_view windowHandle,
                                            std::wstring_view controlId) {
    try {
        constexpr std::wstring_view call = L"GetActiveWindowsList";
        const std::wstring reply = gmui_.GMUI_Execute(EmptyCommand(call));
        if (gmui_.reportedError())
            throw *gmui_.reportedError();
        const auto window = gmui_.SelectNodeAsItStands(
            reply,
            Join(L"(/GMAPI/data[@name='WindowsList']/data[@name='window']/"
                 L"data[@name='hWnd'][.=",
                 windowHandle, L"])/.."),
            NodeForm::Xml);
        // A reply that does not even speak of such a list was meant for another command.
        const bool isList = window && reply.find(L"WindowsList") != std::wstring::npos;
        if (!isList || Refused(reply, call)) {
            RuntimeError error = MakeRuntimeError(ErrorNumber::TypeMismatch);
            error.description = Join(call, L" returned no readable list.");
            throw error;
        }
        if (window->empty())
            return {};
        const auto text = gmui_.SelectNodeAsItStands(
            *window,
            Join(L"/data[@name='window']/data[@name='Controls']/data/data[@name='ID'][.=",
                 controlId, L"]/../data[@name='Text']"),
            NodeForm::Text);
        return Unescape(text.value_or(std::wstring()));
    } catch (RuntimeError& error) {
        error.source.insert(0, L"GMUI_GetControlText: ");
        throw;
    }
}

bool WindowCommands::SetControlText(std::wstring_view windowHandle, std::wstring_view controlId,
                                    std::wstring_view text) {
    const std::wstring reply = gmui_.GMUI_Execute(Command(L"SetControlText")
                                                      .RawData(L"hWndParent", windowHandle)
                                                      .Data(L"ID", controlId)
                                                      .RawData(L"Text", text)
                                                      .Text());
    // GoldMine answers under this other name.
    return reply == SuccessReply(L"GMUI_SetControlText", L"Success");
}

}  // namespace corvane
