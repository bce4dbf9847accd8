#pragma once

#include <string>
#include <string_view>

#include "platform/kit/Windows.h"

namespace corvane {

// The system's words for what went wrong with the file. Raises a run-time error.
[[noreturn]] void ThrowFileError(std::wstring_view what, const std::wstring& path);

// Writes all of them; the path is the file's, for the error.
void WriteBytes(HANDLE file, std::string_view bytes, const std::wstring& path);

}  // namespace corvane
