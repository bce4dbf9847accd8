#pragma once

#include <windows.h>

namespace test_support {

// Whether it is Wine that the tests run on: only its ntdll has this function.
[[nodiscard]] inline bool InWine(HMODULE ntdll = GetModuleHandleW(L"ntdll.dll")) {
    return GetProcAddress(ntdll, "wine_get_version") != nullptr;
}

}  // namespace test_support
