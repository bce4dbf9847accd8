#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "fakes/Said.h"
#include "ui/form/Form.h"
#include "ui/form/FormActions.h"

namespace corvane::test {

// Keeps what a form told its view.
class FakeFormView final : public FormView {
public:
    void Attach(Form& form, FormActions& actions) override {
        form_ = &form;
        actions_ = &actions;
        statusLength_ = form.txtStatus.text().size();
    }
    void Detach() override {
        form_ = nullptr;
        actions_ = nullptr;
    }
    void OnControlChanged(const Control& control, ControlAspect aspect) override {
        changes.push_back({control.name(), aspect});
        if (form_ && &control == &form_->txtStatus)
            WriteDownStatus(aspect);
        if (onChange)
            onChange(control);
    }
    void OnWindowChanged() override {
        ++windowChanges;
        if (form_ && form_->visible() && onShow)
            std::exchange(onShow, nullptr)();
    }
    void OnFocusRequested(const Control& control) override { focus.push_back(control.name()); }
    [[nodiscard]] bool FinishEntry() override { return entryFinishes; }
    // The user, or the program, closes the window.
    void Close() override {
        ++closeRequests;
        closed = !actions_ || actions_->MayClose();
    }

    struct Change {
        std::wstring control;
        ControlAspect aspect;
        bool operator==(const Change&) const = default;
    };
    // The controls whose text or value changed, in order.
    [[nodiscard]] std::vector<std::wstring> ChangedValues() const {
        std::vector<std::wstring> names;
        for (const Change& change : changes) {
            if (change.aspect == ControlAspect::Text || change.aspect == ControlAspect::Value)
                names.push_back(change.control);
        }
        return names;
    }

    std::vector<Change> changes;
    std::function<void(const Control&)> onChange;  // what happens at a change
    std::function<void()> onShow;                  // at the first showing
    int windowChanges = 0;
    std::vector<std::wstring> focus;
    bool entryFinishes = true;
    int closeRequests = 0;
    bool closed = false;

private:
    // Of a longer text what was appended.
    void WriteDownStatus(ControlAspect aspect) {
        if (aspect != ControlAspect::Text && aspect != ControlAspect::Appended)
            return;
        const std::wstring_view status = form_->txtStatus.text();
        WriteDown("line", status.substr(aspect == ControlAspect::Appended ? statusLength_ : 0));
        statusLength_ = status.size();
    }

    std::size_t statusLength_ = 0;
    Form* form_ = nullptr;
    FormActions* actions_ = nullptr;
};

}  // namespace corvane::test
