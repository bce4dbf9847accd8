#pragma once

#include <memory>
#include <string>

#include "check/calls/LogFiles.h"

namespace corvane {

// Logs as files of this computer.
class WindowsLogFiles final : public LogFiles {
public:
    [[nodiscard]] std::unique_ptr<LogSource> Open(const std::wstring& path) const override;
    [[nodiscard]] LogEnd OpenEnd(const std::wstring& path, std::uint64_t most) const override;
    [[nodiscard]] std::wstring TextFromLog(std::string_view bytes) const override;
    void Write(const std::wstring& path, std::string_view bytes) override;
};

}  // namespace corvane
