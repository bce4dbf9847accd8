#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace practice {

// The names by which clients know GoldMine's windows.
inline constexpr const wchar_t* completeCallWindowName = L"DIALOGSCHEDULECOMPLETE";
inline constexpr const wchar_t* historyItemWindowName = L"DIALOGHISTORYITEM";
inline constexpr const wchar_t* contactWindowName = L"CONTACT";
inline constexpr const wchar_t* mainWindowName = L"GOLDMINE";

struct ListedControl {
    int id = 0;
    std::wstring text;
};

struct ListedWindow {
    long handle = 0;
    std::wstring name;
    std::vector<ListedControl> controls;
};

// Puts a window on the list that clients see, until it is destroyed.
void ListWindowAs(HWND window, const wchar_t* name);

// All listed windows, with the controls that have an id of their own.
std::vector<ListedWindow> ListWindows();

// False when the window is not listed or has no such control.
bool SetListedControlText(long windowHandle, long controlId, const std::wstring& text);

// The window's text in full length.
std::wstring TextOf(HWND window);

}  // namespace practice
