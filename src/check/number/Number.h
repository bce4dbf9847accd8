#pragma once

#include <chrono>
#include <span>
#include <string>
#include <string_view>

#include "check/CheckSurroundings.h"

namespace corvane {

class Output;

inline constexpr std::wstring_view numberSummary = L"tells what becomes of a number, both ways";
extern const std::wstring_view numberHelp;

// The command "number". GoldMine may take so long to answer.
[[nodiscard]] int RunNumber(std::span<const std::wstring> given, Output& output,
                            const InSurroundings& inSurroundings,
                            std::chrono::milliseconds limit = std::chrono::seconds(8));

}  // namespace corvane
