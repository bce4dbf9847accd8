#pragma once

#include <exception>
#include <string>

#include "platform/kit/Windows.h"
#include "seams/CrashLine.h"

namespace corvane {

// Writes the line of a crash: of an exception that nobody handles, in whatever thread, and of
// std::terminate. Then Windows handles it as it would have. One at a time in a process. What
// Windows ends without asking the program (a damaged heap, a failed fast-fail check) leaves no
// line.
class CrashHandler final : public CrashLine {
public:
    CrashHandler() noexcept;
    ~CrashHandler() override;
    CrashHandler(const CrashHandler&) = delete;
    CrashHandler& operator=(const CrashHandler&) = delete;

    void Prepare(const std::wstring& logPath, const std::wstring& beforeTime,
                 const std::wstring& beforeMessage) override;

private:
    std::terminate_handler formerTerminate_;
};

}  // namespace corvane
