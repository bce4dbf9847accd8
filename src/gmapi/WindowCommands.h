#pragma once

#include <string>
#include <string_view>

namespace corvane {

class GMUI;

enum class ContactDisplay { NewWindow, CurrentWindow };

// Makes GoldMine find and show a number, show messages, position its record object, report its
// windows, and read or set the controls of an open one.
class WindowCommands {
public:
    explicit WindowCommands(GMUI& gmui) : gmui_(gmui) {}

    // Whether GoldMine found the number and brought its contact up.
    [[nodiscard]] bool CallerID(std::wstring_view phone, ContactDisplay display, bool allPhones);

    // The status code digit of the reply, for those who care; the delay is in GoldMine's unit, and
    // a blank one leaves it to GoldMine.
    std::wstring StatusMsg(std::wstring_view message, std::wstring_view delay);
    std::wstring StatusMsg(std::wstring_view message, int delay);
    [[nodiscard]] std::wstring RecordObj(std::wstring_view command, std::wstring_view argument);

    // Turns GoldMine's report about a window on or off.
    [[nodiscard]] bool RegisterWindowUpDown(std::wstring_view window, bool monitor);

    // A control's text in an open GoldMine window, white space as it stands; empty when the window
    // or the control is not listed. A list that could not be had is an error and no empty text: the
    // one that was reported, else error 13. Errors are raised with "GMUI_GetControlText: " before
    // their source.
    [[nodiscard]] std::wstring GetControlText(std::wstring_view windowHandle,
                                              std::wstring_view controlId);
    // The text goes into the command as it is: the caller has escaped what needs it.
    [[nodiscard]] bool SetControlText(std::wstring_view windowHandle, std::wstring_view controlId,
                                      std::wstring_view text);

private:
    GMUI& gmui_;
};

}  // namespace corvane
