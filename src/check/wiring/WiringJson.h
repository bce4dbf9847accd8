#pragma once

#include <span>
#include <string>

#include "check/wiring/Findings.h"

namespace corvane {

// The findings for programs, in ASCII: {"result": ..., "links": [{"link", "state", "text",
// "fix"}]}.
[[nodiscard]] std::wstring WiringJson(std::span<const Findings::Told> findings);

}  // namespace corvane
