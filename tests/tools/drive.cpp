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
#include <fstream>
#include <optional>
#include <string>
#include <string_view>

namespace {

constexpr wchar_t windowClass[] = L"frmCorvaneTo3CX";
constexpr int deadlineMilliseconds = 20000;
constexpr int pollMilliseconds = 20;

std::optional<int> IdOf(const char* table, std::string_view name) {
    std::ifstream file(table);
    for (std::string line; std::getline(file, line);) {
        const auto end = line.find('\t');
        if (end == std::string::npos || line.substr(0, end) != name)
            continue;
        return std::stoi(line.substr(end + 1));
    }
    return std::nullopt;
}

HWND WaitForWindow() {
    for (int waited = 0; waited < deadlineMilliseconds; waited += pollMilliseconds) {
        const HWND window = FindWindowW(windowClass, nullptr);
        if (window && IsWindowVisible(window))
            return window;
        Sleep(pollMilliseconds);
    }
    return nullptr;
}

struct Search {
    int id;
    HWND found;
};

BOOL CALLBACK CompareId(HWND child, LPARAM parameter) {
    auto& search = *reinterpret_cast<Search*>(parameter);
    if (GetDlgCtrlID(child) != search.id)
        return TRUE;
    search.found = child;
    return FALSE;
}

// Controls stand inside frames, so the whole tree is searched.
HWND FindControlWindow(HWND window, int id) {
    Search search{id, nullptr};
    EnumChildWindows(window, &CompareId, reinterpret_cast<LPARAM>(&search));
    return search.found;
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
    HWND control = nullptr;
    if (count > 3) {
        const auto id = IdOf(arguments[1], arguments[3]);
        control = id ? FindControlWindow(window, *id) : nullptr;
    }
    if (!Drive(window, control, arguments[2], count > 4 ? arguments[4] : "0")) {
        std::fputs("there is no such control, or it cannot do that\n", stderr);
        return 1;
    }
    return 0;
}
