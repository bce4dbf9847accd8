#pragma once

#include <string>
#include <string_view>

// The GMAPI envelope that every command and every reply is written in.
namespace corvane {

// XML character entities, in the order that keeps an entity in the text intact.
[[nodiscard]] std::wstring Escape(std::wstring_view text);
[[nodiscard]] std::wstring Unescape(std::wstring_view text);

// Builds one command: a GMAPI element whose data elements are written in the order given, without
// blanks or line breaks between them.
class Command {
public:
    explicit Command(std::wstring_view call);
    // The value is escaped.
    Command& Data(std::wstring_view name, std::wstring_view value);
    // The value goes as the caller hands it over.
    Command& RawData(std::wstring_view name, std::wstring_view value);
    [[nodiscard]] std::wstring Text() const;

private:
    std::wstring text_;
};

// A command without arguments: <GMAPI call="X"/>.
[[nodiscard]] std::wstring EmptyCommand(std::wstring_view call);

// A command whose content is plain text: <GMAPI call="X">content</GMAPI>.
[[nodiscard]] std::wstring PlainCommand(std::wstring_view call, std::wstring_view content);

// Whether a reply begins with the echo of the call and status code 1, letter case included.
[[nodiscard]] bool Succeeded(std::wstring_view reply, std::wstring_view call);

// Whether it begins with the echo of the call and another status code.
[[nodiscard]] bool Refused(std::wstring_view reply, std::wstring_view call);

// The whole reply of a command that answers success with a fixed text.
[[nodiscard]] std::wstring SuccessReply(std::wstring_view call, std::wstring_view value);

}  // namespace corvane
