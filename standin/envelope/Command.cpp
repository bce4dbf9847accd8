#include "envelope/Command.h"

#include <algorithm>

#include "envelope/Xml.h"
#include "shared/Text.h"

namespace practice {
namespace {

// The call's name in a reply. SetControlText is answered under the name of the routine behind it.
std::wstring_view ReplyName(std::wstring_view call) {
    return call == L"SetControlText" ? std::wstring_view(L"GMUI_SetControlText") : call;
}

// A value as GoldMine puts it into a reply: escaped twice, because clients unescape the text of the
// node once more. A carriage return becomes a character reference; an XML reader would turn the
// bare character into a line feed.
std::wstring EscapeReplyValue(std::wstring_view text) {
    const std::wstring escaped = EscapeXml(EscapeXml(text));
    std::wstring result;
    result.reserve(escaped.size());
    for (const wchar_t character : escaped) {
        if (character == L'\r')
            result += L"&#13;";
        else if (character < L' ' && character != L'\n' && character != L'\t')
            result += L'?';  // no XML text can hold it
        else
            result += character;
    }
    return result;
}

}  // namespace

const std::wstring& Command::Argument(std::wstring_view name) const {
    static const std::wstring none;
    const auto found = std::find_if(arguments.begin(), arguments.end(),
                                    [&](const auto& argument) { return argument.first == name; });
    return found == arguments.end() ? none : found->second;
}

Command ParseCommand(std::wstring_view text) {
    Command command;
    XmlResult xml = ParseXml(text);
    if (!xml.error.empty()) {
        command.error = L"The command is not XML: " + xml.error + L".";
        return command;
    }
    if (xml.root.name != L"GMAPI" || xml.root.Attribute(L"call").empty()) {
        command.error = L"The command is no GMAPI element with a call.";
        return command;
    }
    command.call = xml.root.Attribute(L"call");
    command.text = Trim(xml.root.text);
    for (XmlElement& child : xml.root.children) {
        if (child.name == L"data")
            command.arguments.emplace_back(child.Attribute(L"name"), std::move(child.text));
    }
    return command;
}

Answer Reply(std::wstring_view call, wchar_t statusDigit, std::wstring_view value,
             std::wstring_view extra) {
    Answer answer;
    answer.reply = L"<GMAPI call=\"" + EscapeXml(ReplyName(call)) + L"\"><status code=\"";
    answer.reply += statusDigit;
    answer.reply += L"\">" + EscapeReplyValue(value) + L"</status>";
    answer.reply += extra;
    answer.reply += L"</GMAPI>";
    return answer;
}

Answer Success(const Command& command, std::wstring_view value, std::wstring_view extra) {
    return Reply(command.call, L'1', value, extra);
}

Answer Failure(const Command& command, std::wstring_view reason) {
    return Reply(command.call, L'0', reason);
}

Answer FailedCall(HRESULT result) {
    Answer answer;
    answer.kind = Answer::Kind::Result;
    answer.result = result;
    return answer;
}

std::wstring DataElement(std::wstring_view name, std::wstring_view content) {
    std::wstring element = L"<data name=\"" + EscapeXml(name) + L"\">";
    element += content;
    element += L"</data>";
    return element;
}

std::wstring DataValue(std::wstring_view name, std::wstring_view value) {
    return DataElement(name, EscapeReplyValue(value));
}

}  // namespace practice
