#pragma once

#include <optional>
#include <string>
#include <vector>

#include "check/Survey.h"

namespace corvane {

class WindowsSurvey final : public Survey {
public:
    [[nodiscard]] std::optional<bool> Elevated(ProcessId id) const override;
    // Both open the folder, or the file, for what is asked, and close it again.
    [[nodiscard]] bool MayAddTo(const std::wstring& folder) const override;
    [[nodiscard]] bool MayList(const std::wstring& folder) const override;
    [[nodiscard]] std::wstring WhyNotAppendTo(const std::wstring& file) const override;
    [[nodiscard]] std::vector<std::wstring> BoxesOf(ProcessId id) const override;
    // Reads it as data; nothing of the file runs.
    [[nodiscard]] std::wstring FileVersion(const std::wstring& file) const override;
    void ReadAutomationClass() const override;
};

}  // namespace corvane
