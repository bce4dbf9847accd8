#pragma once

#include <windows.h>

#include <functional>
#include <string>

namespace test_support {

// Calls for each window of the process that stands on the desktop, till it answers false.
void ForEachWindow(DWORD processId, const std::function<bool(HWND)>& visit);
// The same for what stands inside a window, at any depth.
void ForEachChild(HWND parent, const std::function<bool(HWND)>& visit);
// A control by its id, nullptr when there is none.
HWND ChildWithId(HWND parent, int id);

std::wstring ClassOf(HWND window);
// The text of a window or control of any process.
std::wstring TextOf(HWND window);

}  // namespace test_support
