#pragma once

#include <string>

#include "check/calls/LogFiles.h"
#include "check/calls/LogReader.h"

namespace corvane {

class Masking;

// The end of a log from its first whole line on, with its lines masked.
class EndOfLog final : public LogSource {
public:
    // Without a masking the lines are as they stand. Raises run-time errors.
    EndOfLog(const LogFiles& files, const std::wstring& path, std::uint64_t most, Masking* masking);

    std::size_t Read(std::span<char> buffer) override;

private:
    [[nodiscard]] std::string Masked(std::string_view line) const;

    const LogFiles& files_;
    Masking* masking_;
    LogEnd end_;
    LogReader reader_;
    std::string pending_;  // of a line that was handed out in part
};

}  // namespace corvane
