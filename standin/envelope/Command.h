#pragma once

#include <windows.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace practice {

// One GMAPI command as it was read.
struct Command {
    std::wstring call;
    std::wstring text;  // the text beside the arguments; a menu command's name
    std::vector<std::pair<std::wstring, std::wstring>> arguments;
    std::wstring error;  // why the command could not be read, "" when it could

    // The argument's value, "" when there is none.
    [[nodiscard]] const std::wstring& Argument(std::wstring_view name) const;
};

// Reads a command; one that is no GMAPI element has an error and the call "".
Command ParseCommand(std::wstring_view text);

// What the client gets: a reply text, a plain HRESULT, or an automation exception.
struct Answer {
    enum class Kind { Reply, Result, Exception };

    Kind kind = Kind::Reply;
    std::wstring reply;
    HRESULT result = S_OK;
    long number = 0;  // of the exception: a run-time error number or an HRESULT
    std::wstring source;
    std::wstring description;
};

// <GMAPI call="X"><status code="digit">value</status>extra</GMAPI>; the value is escaped here, the
// extra elements come ready-made.
Answer Reply(std::wstring_view call, wchar_t statusDigit, std::wstring_view value,
             std::wstring_view extra = {});
Answer Success(const Command& command, std::wstring_view value, std::wstring_view extra = {});
Answer Failure(const Command& command, std::wstring_view reason);
// The call fails as a call.
Answer FailedCall(HRESULT result);

// A data element of a reply around ready-made content, and around a value that is escaped here.
std::wstring DataElement(std::wstring_view name, std::wstring_view content);
std::wstring DataValue(std::wstring_view name, std::wstring_view value);

}  // namespace practice
