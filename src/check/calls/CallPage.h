#pragma once

#include <string>
#include <string_view>

#include "check/calls/CallLog.h"

namespace corvane {

// The calls as one page for a browser: no script, nothing from elsewhere.
[[nodiscard]] std::string CallPage(const CallLog& log, std::wstring_view logPath,
                                   std::wstring_view filter, LogTime made);

}  // namespace corvane
