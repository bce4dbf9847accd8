#pragma once

#include <string>

namespace corvane {

// The line that a crash of the program itself leaves in the log.
class CrashLine {
public:
    virtual ~CrashLine() = default;
    // Where the line goes from now on, and what stands in it before the time and before the
    // message. Nothing more of the run is looked at when it has crashed.
    virtual void Prepare(const std::wstring& logPath, const std::wstring& beforeTime,
                         const std::wstring& beforeMessage) = 0;
};

}  // namespace corvane
