#pragma once

#include <functional>
#include <string>
#include <vector>

#include "fakes/Said.h"
#include "seams/StatusWriter.h"

namespace corvane::test {

// Keeps every status line with its log mode.
class FakeStatusWriter final : public StatusWriter {
public:
    using StatusWriter::WriteStatus;
    void WriteStatus(std::wstring_view message, LogMode mode) override {
        if (onWrite)
            onWrite();
        WriteDown("line", message);
        lines.emplace_back(message);
        modes.push_back(mode);
    }

    std::vector<std::wstring> lines;
    std::vector<LogMode> modes;
    std::function<void()> onWrite;
};

}  // namespace corvane::test
