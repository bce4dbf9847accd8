#pragma once

#include <windows.h>

#include <functional>

namespace test_support {

inline constexpr DWORD patience = 60'000;  // milliseconds until a wait counts as failed

// False when the condition does not hold before the patience is at its end.
[[nodiscard]] bool WaitUntil(const std::function<bool()>& condition);

// The same for threads that have windows or COM objects: serves their messages and calls meanwhile.
[[nodiscard]] bool PumpUntil(const std::function<bool()>& condition);

}  // namespace test_support
