#pragma once

#include <chrono>
#include <span>
#include <string>
#include <string_view>

#include "check/calls/LogTime.h"
#include "check/CheckSurroundings.h"

namespace corvane {

class LogFiles;
class Output;
class ReportFiles;

inline constexpr std::wstring_view reportSummary = L"puts all that support needs into one file";
extern const std::wstring_view reportHelp;

// What the command needs from outside.
struct ReportSurroundings {
    InSurroundings inSurroundings;
    const LogFiles& logs;
    ReportFiles& files;
    std::wstring logPath;      // the log of this computer
    std::wstring usualFolder;  // where the report goes when no file is named
    std::wstring versionText;
    LogTime now;
    std::chrono::milliseconds linksTime = std::chrono::seconds(8);
    std::chrono::milliseconds partTime = std::chrono::seconds(2);
};

// The command "report".
[[nodiscard]] int RunReport(std::span<const std::wstring> given, Output& output,
                            const ReportSurroundings& around);

}  // namespace corvane
