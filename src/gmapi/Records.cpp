#include "gmapi/Records.h"

#include "gmapi/Envelope.h"
#include "gmapi/GMUI.h"

namespace corvane {

Records::Result Records::Send(std::wstring_view call, Arguments arguments) {
    Command command(call);
    for (const auto& [name, value] : arguments)
        command.Data(name, value);
    const std::wstring reply = gmui_.GMUI_Execute(command.Text());
    if (!Succeeded(reply, call))
        return std::nullopt;
    return gmui_.StatusValue(reply);
}

Records::Result Records::Open(std::wstring_view filename) {
    return Send(L"Open", {{L"Filename", filename}});
}

Records::Result Records::Move(std::wstring_view area, std::wstring_view command,
                              std::wstring_view parameter) {
    return Send(L"Move", {{L"Area", area}, {L"Command", command}, {L"Parameter", parameter}});
}

Records::Result Records::Read(std::wstring_view area, std::wstring_view field) {
    return Send(L"Read", {{L"Area", area}, {L"Field", field}});
}

Records::Result Records::Replace(std::wstring_view area, std::wstring_view field,
                                 std::wstring_view newValue, bool append) {
    return Send(L"Replace", {{L"Area", area},
                             {L"Field", field},
                             {L"NewValue", newValue},
                             {L"Append", append ? L"1" : L"0"}});
}

Records::Result Records::Unlock(std::wstring_view area) {
    return Send(L"Unlock", {{L"Area", area}});
}

Records::Result Records::Close(std::wstring_view area) {
    return Send(L"Close", {{L"Area", area}});
}

Records::Result Records::InsHist(const HistoryItem& item) {
    Result inserted = Send(L"InsHist", {{L"AccNo", item.AccNo},
                                        {L"Activity", item.Activity},
                                        {L"Duration", item.Duration},
                                        {L"OpRecID", item.OpRecID},
                                        {L"RecType", item.RecType},
                                        {L"Ref", item.Ref},
                                        {L"ResultCode", item.ResultCode},
                                        {L"Notes", item.Notes},
                                        {L"User", item.User},
                                        {L"Private", item.Private}});
    if (inserted && *inserted == L"0")
        return std::nullopt;
    return inserted;
}

}  // namespace corvane
