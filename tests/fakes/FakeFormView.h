#pragma once

#include <string>
#include <vector>

#include "ui/form/Form.h"

namespace corvane::test {

// Keeps what a form told its view.
class FakeFormView final : public FormView {
public:
    void OnControlChanged(const Control& control, ControlAspect aspect) override {
        changes.push_back({control.name(), aspect});
    }
    void OnWindowChanged() override { ++windowChanges; }
    void OnFocusRequested(const Control& control) override { focus.push_back(control.name()); }
    [[nodiscard]] bool FinishEntry() override { return entryFinishes; }

    struct Change {
        std::wstring control;
        ControlAspect aspect;
        bool operator==(const Change&) const = default;
    };
    std::vector<Change> changes;
    int windowChanges = 0;
    std::vector<std::wstring> focus;
    bool entryFinishes = true;
};

}  // namespace corvane::test
