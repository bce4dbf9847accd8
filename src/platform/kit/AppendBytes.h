#pragma once

#include <string_view>

#include "platform/kit/Handles.h"
#include "platform/kit/Windows.h"

namespace corvane {

enum class CheckPlace { No, Yes };

// An answer of the program's own: the path leads to another place than it says.
constexpr DWORD leadsElsewhere = 0x20000001;

// Appends bytes to a file, whole and in turn with other instances; creates it when missing. The
// answer is the system's error code. The mutex of the turns is opened once and kept by the caller.
// Takes no memory of the heap: the line of a crash comes here too.
[[nodiscard]] DWORD AppendBytes(const wchar_t* path, std::string_view bytes, CheckPlace check,
                                UniqueHandle& mutex);

}  // namespace corvane
