#pragma once

#include <string>
#include <string_view>

#include "shared/Handles.h"

namespace practice {

// journal.txt: what was asked, answered and raised. UTF-8, LF line ends, one whole line per write,
// so that others can read along.
class Journal {
public:
    // Opens the file for appending, emptied first when `fresh`.
    Journal(const std::wstring& file, bool fresh);

    void Note(std::wstring_view text);                                     // "# text"
    void Command(std::wstring_view text);                                  // "> text"
    void Reply(std::wstring_view text);                                    // "< text"
    void Failed(HRESULT result);                                           // "< HRESULT 0x80070005"
    void Event(std::wstring_view windowName, bool up, long windowHandle);  // "! WindowUpDown ..."

private:
    void WriteLine(std::wstring_view mark, std::wstring_view text);

    KernelHandle file_;
};

// An HRESULT as 0x and eight hexadecimal digits.
std::wstring HexadecimalText(HRESULT result);

}  // namespace practice
