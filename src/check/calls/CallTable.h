#pragma once

#include <string>

#include "check/calls/CallLog.h"

namespace corvane {

// The calls as rows of text, one for each event, and their summary below.
[[nodiscard]] std::wstring CallTableText(const CallLog& log);

}  // namespace corvane
