#pragma once

#include <string>

#include "EndToEndTest.h"

namespace end_to_end {

// The program's settings window, used as a person at the screen would: by its controls.
class WindowTest : public EndToEndTest {
protected:
    // What the program asks at its end when options were changed.
    static const Box exitQuestion;

    // A settings run beside the practice GoldMine, or without one.
    HWND Show(ProgramRun& run);
    // Closes the window, with nothing to be saved. The whole run showed these boxes and no other.
    void Close(ProgramRun& run, HWND window, const Boxes& boxes = {});
    // The same with changed options: the question comes last, and the answer is No.
    void CloseAndDiscard(ProgramRun& run, HWND window, Boxes boxes = {});

    static bool Checked(HWND window, const std::string& control);
    // Clicks and waits until the program has done with it.
    static void Click(HWND window, const std::string& control);
    static void Type(HWND window, const std::string& control, const std::wstring& text);
    static void SelectTab(HWND window, const std::string& strip, int tab);
    // Gives the focus; the box that had it is left.
    static void Focus(HWND window, const std::string& control);
    // The name of the control that has the focus; empty for none.
    static std::string FocusedControl(HWND window);
    static bool HasFocus(HWND window, const std::string& control);
    static bool TextIs(HWND window, const std::string& control, const std::string& text);
};

}  // namespace end_to_end
