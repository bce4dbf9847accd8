#include "ui/form/Form.h"

#include <stdexcept>

#include "ui/form/EnablingRules.h"
#include "util/RuntimeError.h"

namespace corvane {

Control::Control(Form& form, std::size_t row)
    : form_(form), row_(row), caption_(spec().caption), tooltip_(spec().tip) {
    form.controls_[row] = this;
}

void Control::setEnabled(bool enabled) {
    if (enabled_ == enabled)
        return;
    enabled_ = enabled;
    Show(ControlAspect::Enabled);
}

void Control::setVisible(bool visible) {
    if (visible_ == visible)
        return;
    visible_ = visible;
    Show(ControlAspect::Visible);
}

void Control::setCaption(std::wstring_view caption) {
    caption_ = caption;
    Show(ControlAspect::Caption);
}

void Control::setTooltip(std::wstring_view tooltip) {
    tooltip_ = tooltip;
    Show(ControlAspect::Tooltip);
}

void Control::Changed(ControlAspect aspect) {
    Show(aspect);
    if (spec().has(ControlTrait::option))
        form_.SettingsDirty = true;
    RunEnablingRules(form_, *this);
}

void Control::Show(ControlAspect aspect) {
    if (form_.view_)
        form_.view_->OnControlChanged(*this, aspect);
}

void TextBox::setText(std::wstring_view text) {
    if (text_ == text)
        return;
    text_ = text;
    Changed(ControlAspect::Text);
}

void TextBox::Append(std::wstring_view text) {
    text_ += text;
    Changed(ControlAspect::Appended);
}

void CheckBox::setValue(int value) {
    if (value < unchecked || value > greyed)
        throw MakeRuntimeError(ErrorNumber::InvalidPropertyValue);
    if (value_ == value)
        return;
    value_ = value;
    Changed(ControlAspect::Value);
}

void OptionButton::setSelected(bool selected) {
    if (selected_ == selected)
        return;
    selected_ = selected;
    if (selected) {
        for (OptionButton* other : form_.GroupOf(*this)) {
            if (other != this)
                other->setSelected(false);
        }
    }
    Changed(ControlAspect::Value);
}

Form::Form(FormView* view) {
    for (std::size_t row = 0; row < controls_.size(); ++row) {
        if (controls_[row])
            continue;
        // Only captions and containers have no name of their own in the program.
        if (SpecOf(row).kind == ControlKind::Frame)
            others_.push_back(std::make_unique<Frame>(*this, row));
        else if (SpecOf(row).kind == ControlKind::Label)
            others_.push_back(std::make_unique<Label>(*this, row));
        else
            throw std::logic_error("a control of the catalogue has no member of the form");
    }
    for (Control* each : controls_) {
        const auto& spec = each->spec();
        if (spec.name == L"frameOptions" || spec.name == L"frameParams")
            each->setVisible(spec.index == 0);
    }
    view_ = view;
}

Control& Form::control(std::wstring_view name, int index) const {
    const std::size_t row = RowOfControl(name, index);
    if (row == noControl)
        throw std::logic_error("no such control");
    return *controls_[row];
}

std::vector<OptionButton*> Form::GroupOf(const OptionButton& option) const {
    std::vector<OptionButton*> members;
    for (Control* each : controls_) {
        if (each->spec().kind == ControlKind::OptionButton &&
            each->spec().group == option.spec().group) {
            members.push_back(static_cast<OptionButton*>(each));
        }
    }
    return members;
}

std::wstring_view Form::FramesOf(const TabStrip& strip) {
    return strip.spec().name == L"tabstripOptions" ? L"frameOptions" : L"frameParams";
}

void Form::SelectTab(TabStrip& strip, int tab) {
    const std::wstring_view frames = FramesOf(strip);
    if (strip.selectedTab_ == tab || RowOfControl(frames, tab) == noControl)
        return;
    control(frames, strip.selectedTab_).setVisible(false);
    strip.selectedTab_ = tab;
    control(frames, tab).setVisible(true);
    if (view_)
        view_->OnWindowChanged();
}

void Form::ToggleParams() {
    const bool open = cmdParams.caption() == paramsCaptionClosed;
    width_ = open ? windowWideWidth : windowNarrowWidth;
    cmdParams.setCaption(open ? paramsCaptionOpen : paramsCaptionClosed);
    if (view_)
        view_->OnWindowChanged();
}

void Form::setCaption(std::wstring_view caption) {
    caption_ = caption;
    if (view_)
        view_->OnWindowChanged();
}

void Form::setVisible(bool visible) {
    if (visible_ == visible)
        return;
    visible_ = visible;
    if (view_)
        view_->OnWindowChanged();
}

void Form::Close() {
    if (view_)
        view_->Close();
}

void Form::setWaiting(bool waiting) {
    waiting_ = waiting;
    if (view_)
        view_->OnWindowChanged();
}

void Form::SetFocus(const Control& control) {
    for (const ControlSpec* spec = &control.spec(); !spec->parent.empty();
         spec = &SpecOf(RowOfControl(spec->parent, spec->parentIndex))) {
        for (TabStrip* strip :
             {static_cast<TabStrip*>(&tabstripOptions), static_cast<TabStrip*>(&tabstripParams)}) {
            if (spec->parent == FramesOf(*strip))
                SelectTab(*strip, spec->parentIndex);
        }
    }
    focused_ = &control;
    if (view_)
        view_->OnFocusRequested(control);
}

}  // namespace corvane
