#pragma once

#include <string>
#include <vector>

#include "seams/MessageBoxes.h"
#include "seams/StatusWriter.h"

namespace corvane {

// What the program's own logic says, kept instead of shown. It asks nobody: each question is
// declined.
class Talk final : public MessageBoxes, public StatusWriter {
public:
    BoxAnswer Show(std::wstring_view text, BoxButtons buttons, BoxIcon) override {
        boxes.emplace_back(text);
        return buttons == BoxButtons::Ok ? BoxAnswer::Ok : BoxAnswer::No;
    }
    using StatusWriter::WriteStatus;
    void WriteStatus(std::wstring_view message, LogMode) override { lines.emplace_back(message); }

    // The last line; empty when there is none.
    [[nodiscard]] std::wstring last() const {
        return lines.empty() ? std::wstring() : lines.back();
    }

    std::vector<std::wstring> boxes;
    std::vector<std::wstring> lines;
};

}  // namespace corvane
