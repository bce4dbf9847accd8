#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "check/Survey.h"
#include "util/RuntimeError.h"

namespace corvane::test {

// Nothing is wrong unless the test says so.
class FakeSurvey final : public Survey {
public:
    [[nodiscard]] std::optional<bool> Elevated(ProcessId id) const override {
        const auto found = elevated.find(id);
        return found == elevated.end() ? std::optional(false) : found->second;
    }
    [[nodiscard]] bool MayAddTo(const std::wstring&) const override { return mayAdd; }
    [[nodiscard]] bool MayList(const std::wstring&) const override { return mayList; }
    [[nodiscard]] std::wstring WhyNotAppendTo(const std::wstring&) const override {
        return whyNotAppend;
    }
    [[nodiscard]] std::vector<std::wstring> BoxesOf(ProcessId id) const override {
        const auto found = boxes.find(id);
        return found == boxes.end() ? std::vector<std::wstring>() : found->second;
    }
    [[nodiscard]] std::wstring FileVersion(const std::wstring& file) const override {
        const auto found = versions.find(file);
        return found == versions.end() ? std::wstring() : found->second;
    }
    void ReadAutomationClass() const override {
        if (automationError)
            throw *automationError;
    }

    std::map<ProcessId, std::optional<bool>> elevated;
    bool mayAdd = false;
    bool mayList = true;
    std::wstring whyNotAppend;
    std::map<ProcessId, std::vector<std::wstring>> boxes;
    std::map<std::wstring, std::wstring> versions;
    std::optional<RuntimeError> automationError;
};

}  // namespace corvane::test
