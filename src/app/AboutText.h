#pragma once

#include <string>
#include <string_view>

namespace corvane {

struct ProgramInfo;

// The About tab: what the program is, its version, where its log and its settings live.
[[nodiscard]] std::wstring AboutText(const ProgramInfo& program, std::wstring_view logPath);

}  // namespace corvane
