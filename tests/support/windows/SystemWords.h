#pragma once

#include <windows.h>

#include <string>

namespace test_support {

// The system's words for an error code, the line break behind them included.
[[nodiscard]] std::wstring SystemWords(DWORD code);

}  // namespace test_support
