#pragma once

#include <windows.h>

#include <iosfwd>
#include <string>
#include <vector>

namespace end_to_end {

// A message box as its user sees it.
struct Box {
    std::string text;            // lines end in \r\n
    std::string buttons = "OK";  // the captions from left to right, as "Yes No Cancel"
    std::string icon = "none";   // none, critical, exclamation, question, information
    std::string title = "Halvorn Corvane to 3CX";

    bool operator==(const Box&) const = default;
};
void PrintTo(const Box& box, std::ostream* stream);

using Boxes = std::vector<Box>;

// The message box of the process that is on the desktop now, or nullptr.
HWND FindBox(DWORD processId);
Box ReadBox(HWND box);
// Presses the button: OK, Yes, No or Cancel. The box is gone afterwards.
void AnswerBox(HWND box, const std::string& answer);

}  // namespace end_to_end
