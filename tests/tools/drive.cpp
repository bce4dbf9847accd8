// Drives the program's window from outside, by the names in controls.tsv:
//
//   drive <controls.tsv> wait                    waits until the window is there
//   drive <controls.tsv> click <control>         clicks a button or a box
//   drive <controls.tsv> tab <strip> <number>    selects a tab, counted from 0
//   drive <controls.tsv> type <control> <text>   replaces a box's text
//   drive <controls.tsv> close                   closes the window as its close box does
//
// Exit code 0 when it was done, 1 when the window or the control is not there.

#include <windows.h>

#include <commctrl.h>

#include <cstdio>
#include <map>
#include <string>
#include <string_view>

#include "support/ControlTable.h"
#include "support/windows/NativeWindow.h"
#include "support/windows/Waiting.h"

namespace {

using namespace test_support;

constexpr wchar_t windowClass[] = L"frmCorvaneTo3CX";

HWND WaitForWindow() {
    HWND window = nullptr;
    const bool shown = WaitUntil([&] {
        window = FindWindowW(windowClass, nullptr);
        return window && IsWindowVisible(window);
    });
    return shown ? window : nullptr;
}

// nullptr when the table or the window has none of this name.
HWND FindControl(HWND window, const char* table, const std::string& name) {
    const std::map<std::string, int> ids = ReadControlIds(table);
    const auto known = ids.find(name);
    return known == ids.end() ? nullptr : ChildWithId(window, known->second);
}

bool Drive(HWND window, HWND control, std::string_view action, const char* argument) {
    if (action == "wait")
        return true;
    if (action == "close")
        return PostMessageW(window, WM_CLOSE, 0, 0) != 0;
    if (!control)
        return false;
    if (action == "click") {
        // Posted: a click may open a message box, which must not keep the driver.
        return PostMessageW(control, BM_CLICK, 0, 0) != 0;
    }
    if (action == "tab") {
        SendMessageW(control, TCM_SETCURFOCUS, static_cast<WPARAM>(std::stoi(argument)), 0);
        return true;
    }
    if (action == "type")
        return SetWindowTextA(control, argument) != 0;
    return false;
}

}  // namespace

int main(int count, char** arguments) {
    if (count < 3) {
        std::fputs("usage: drive <controls.tsv> wait|click|tab|type|close [<control> [<value>]]\n",
                   stderr);
        return 1;
    }
    const HWND window = WaitForWindow();
    if (!window) {
        std::fputs("the window did not appear\n", stderr);
        return 1;
    }
    const HWND control = count > 3 ? FindControl(window, arguments[1], arguments[3]) : nullptr;
    if (!Drive(window, control, arguments[2], count > 4 ? arguments[4] : "0")) {
        std::fputs("there is no such control, or it cannot do that\n", stderr);
        return 1;
    }
    return 0;
}
