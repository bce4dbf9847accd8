#pragma once

#include <chrono>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "check/CheckSurroundings.h"
#include "check/wiring/Findings.h"

namespace corvane {

class Output;

inline constexpr std::wstring_view wiringSummary = L"looks at each link between GoldMine and 3CX";
extern const std::wstring_view wiringHelp;

// How long the links may take altogether; the program's start and end take a moment, too.
inline constexpr std::chrono::milliseconds wiringTime{8000};

// The findings on all links, in the order of what is printed, and as they are printed.
[[nodiscard]] std::vector<Findings::Told> LookAtLinks(const InSurroundings& inSurroundings,
                                                      std::chrono::milliseconds limit = wiringTime);
[[nodiscard]] std::wstring WiringText(std::span<const Findings::Told> findings);

// The command "wiring".
[[nodiscard]] int RunWiring(std::span<const std::wstring> given, Output& output,
                            const InSurroundings& inSurroundings,
                            std::chrono::milliseconds limit = wiringTime);

}  // namespace corvane
