// Answers message boxes and other dialogs as a user does, for demonstrations and tests that nobody
// watches.
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "shared/Text.h"

namespace {

using practice::ToUtf8;

constexpr DWORD defaultWaitSeconds = 30;
constexpr long longestWaitSeconds = 24 * 60 * 60;
constexpr DWORD pollMilliseconds = 20;
constexpr std::string_view usage =
    "answer <title> [<button>]... [/Wait:<seconds>]\n"
    "\n"
    "  Waits for a message box or another dialog with this title, writes its text and presses the\n"
    "  button with this label (Yes, No, OK, ...); then the same with the next button. Without a\n"
    "  button it writes the text and leaves the box open. /Wait is how long a box may take to "
    "come\n"
    "  or to go (default 30).\n";

struct Box {
    HWND window = nullptr;
    std::wstring text;
    std::vector<HWND> buttons;
};

std::wstring TextOf(HWND control) {
    // Other programs' controls tell their text only to a message.
    const LRESULT length = SendMessageW(control, WM_GETTEXTLENGTH, 0, 0);
    std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
    text.resize(static_cast<std::size_t>(
        SendMessageW(control, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
    return text;
}

std::wstring LabelOf(HWND button) {
    std::wstring label = TextOf(button);
    std::erase(label, L'&');
    return label;
}

// What is to be seen in the window.
Box ReadBox(HWND window) {
    Box box;
    box.window = window;
    for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        wchar_t name[16]{};
        GetClassNameW(child, name, 16);
        const std::wstring_view className = name;
        const LONG_PTR kind = GetWindowLongPtrW(child, GWL_STYLE);
        if (!IsWindowVisible(child))
            continue;
        if (className == L"Button")
            box.buttons.push_back(child);
        else if (className == L"Static" && (kind & SS_TYPEMASK) != SS_ICON)
            box.text += (box.text.empty() ? L"" : L"\n") + TextOf(child);
    }
    return box;
}

bool FindBox(const std::wstring& title, Box& box) {
    HWND window = nullptr;
    while ((window = FindWindowExW(nullptr, window, L"#32770", title.c_str())) != nullptr) {
        box = IsWindowVisible(window) ? ReadBox(window) : Box();
        if (!box.buttons.empty() && !box.text.empty())
            return true;
    }
    return false;
}

template <typename Condition>
bool WaitUntil(DWORD seconds, Condition condition) {
    const ULONGLONG deadline = GetTickCount64() + seconds * 1000ULL;
    while (!condition()) {
        if (GetTickCount64() >= deadline)
            return false;
        Sleep(pollMilliseconds);
    }
    return true;
}

bool WriteText(const std::wstring& title, DWORD waitSeconds, Box& box) {
    if (!WaitUntil(waitSeconds, [&] { return FindBox(title, box); })) {
        std::fprintf(stderr, "answer: no dialog \"%s\" within %lu seconds.\n",
                     ToUtf8(title).c_str(), waitSeconds);
        return false;
    }
    std::string text = ToUtf8(box.text);
    std::erase(text, '\r');
    std::printf("%s\n", text.c_str());
    return true;
}

bool Press(const Box& box, const std::wstring& label, DWORD waitSeconds) {
    const auto button = std::find_if(box.buttons.begin(), box.buttons.end(),
                                     [&](HWND one) { return LabelOf(one) == label; });
    if (button == box.buttons.end()) {
        std::fprintf(stderr, "answer: the dialog has no button \"%s\".\n", ToUtf8(label).c_str());
        return false;
    }
    PostMessageW(box.window, WM_COMMAND, static_cast<WPARAM>(GetDlgCtrlID(*button)),
                 reinterpret_cast<LPARAM>(*button));
    if (!WaitUntil(waitSeconds, [&] { return !IsWindow(box.window); })) {
        std::fprintf(stderr, "answer: the dialog stays.\n");
        return false;
    }
    std::printf("[%s]\n", ToUtf8(label).c_str());
    return true;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    constexpr std::wstring_view wait = L"/Wait:";
    long waitSeconds = defaultWaitSeconds;
    std::vector<std::wstring> labels;
    for (int i = 2; i < count; ++i) {
        const std::wstring argument = arguments[i];
        if (argument.starts_with(wait))
            waitSeconds = practice::ToNumber(argument.substr(wait.size()), 0);
        else
            labels.push_back(argument);
    }
    if (count < 2 || waitSeconds < 1 || waitSeconds > longestWaitSeconds) {
        std::fputs(usage.data(), stderr);
        return 2;
    }
    const std::wstring title = arguments[1];
    const auto seconds = static_cast<DWORD>(waitSeconds);
    Box box;
    if (labels.empty())
        return WriteText(title, seconds, box) ? 0 : 1;
    for (const std::wstring& label : labels) {
        if (!WriteText(title, seconds, box) || !Press(box, label, seconds))
            return 1;
    }
    return 0;
}
