#pragma once

#include <string>
#include <vector>

#include "Box.h"
#include "support/windows/Process.h"

namespace end_to_end {

// One run of the program, watched from outside. Whoever starts one ends it with Finish.
class ProgramRun {
public:
    ProgramRun(const std::wstring& program, const std::string& commandLine);

    DWORD processId() const { return process_.id(); }
    // The main window once it is shown; nullptr and a failure when it never is.
    HWND WaitForWindow();
    // Waits for the next message box, notes it and presses the button.
    void Answer(const std::string& answer);
    // Answers the boxes that come with these answers in turn; a box too many is closed by its first
    // button. Waits for the program's end; one that does not end fails the test.
    void Finish(const std::vector<std::string>& answers = {}, DWORD exitCode = 0);
    // Ends it from outside, in whatever it is doing.
    void Kill();

    const Boxes& boxes() const { return boxes_; }
    bool windowShown() const { return windowShown_; }

private:
    HWND FindMainWindow() const;
    void Watch();
    void ExpectNoWindow() const;

    test_support::Process process_;
    Boxes boxes_;
    bool windowShown_ = false;
};

// The main window's controls, by their names.
HWND ControlNamed(HWND mainWindow, const std::string& name);
std::string NameOfControl(HWND control);  // empty for what is none
std::string ControlText(HWND mainWindow, const std::string& name);
bool ControlEnabled(HWND mainWindow, const std::string& name);
void PressControl(HWND mainWindow, const std::string& name);

}  // namespace end_to_end
