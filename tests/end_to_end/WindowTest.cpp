#include "WindowTest.h"

#include <commctrl.h>

namespace end_to_end {
namespace {

DWORD ThreadOf(HWND window) {
    return GetWindowThreadProcessId(window, nullptr);
}

HWND FocusOf(HWND window) {
    GUITHREADINFO info{};
    info.cbSize = sizeof(info);
    GetGUIThreadInfo(ThreadOf(window), &info);
    return info.hwndFocus;
}

}  // namespace

HWND WindowTest::Show(ProgramRun& run) {
    const HWND window = run.WaitForWindow();
    // The window is ready once it answers.
    SendMessageW(window, WM_NULL, 0, 0);
    return window;
}

const Box WindowTest::exitQuestion{"Do you want to save configuration changes before exiting?",
                                   "Yes No Cancel"};

void WindowTest::Close(ProgramRun& run, HWND window, const Boxes& boxes) {
    PostMessageW(window, WM_CLOSE, 0, 0);
    EXPECT_EQ(Finish(run, {"No"}).boxes, boxes);
}

void WindowTest::CloseAndDiscard(ProgramRun& run, HWND window, Boxes boxes) {
    boxes.push_back(exitQuestion);
    Close(run, window, boxes);
}

bool WindowTest::Checked(HWND window, const std::string& control) {
    return SendMessageW(ControlNamed(window, control), BM_GETCHECK, 0, 0) == BST_CHECKED;
}

void WindowTest::Click(HWND window, const std::string& control) {
    SendMessageW(ControlNamed(window, control), BM_CLICK, 0, 0);
}

void WindowTest::Type(HWND window, const std::string& control, const std::wstring& text) {
    const HWND box = ControlNamed(window, control);
    SendMessageW(box, EM_SETSEL, 0, -1);
    SendMessageW(box, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text.c_str()));
}

void WindowTest::SelectTab(HWND window, const std::string& strip, int tab) {
    SendMessageW(ControlNamed(window, strip), TCM_SETCURFOCUS, static_cast<WPARAM>(tab), 0);
}

void WindowTest::Focus(HWND window, const std::string& control) {
    // By the window's own dialog keyboard it takes the same road as the Tab key.
    AttachThreadInput(GetCurrentThreadId(), ThreadOf(window), TRUE);
    SetFocus(ControlNamed(window, control));
    AttachThreadInput(GetCurrentThreadId(), ThreadOf(window), FALSE);
}

std::string WindowTest::FocusedControl(HWND window) {
    return NameOfControl(FocusOf(window));
}

bool WindowTest::HasFocus(HWND window, const std::string& control) {
    const HWND wanted = ControlNamed(window, control);
    return WaitUntil([&] { return FocusOf(window) == wanted; });
}

bool WindowTest::TextIs(HWND window, const std::string& control, const std::string& text) {
    return WaitUntil([&] { return ControlText(window, control) == text; });
}

}  // namespace end_to_end
