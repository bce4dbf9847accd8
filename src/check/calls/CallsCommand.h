#pragma once

#include <functional>
#include <span>
#include <string>

#include "check/calls/LogTime.h"

namespace corvane {

class LogFiles;
class Output;

extern const std::wstring_view callsSummary;
extern const std::wstring_view callsHelp;

// What the command needs from outside.
struct CallsSurroundings {
    LogFiles& files;
    std::wstring logPath;  // the log of this computer
    LogTime now;
};

// "CorvaneCheck calls": the log as calls.
[[nodiscard]] int RunCalls(std::span<const std::wstring> given, Output& output,
                           const CallsSurroundings& around);

}  // namespace corvane
