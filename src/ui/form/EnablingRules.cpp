#include "ui/form/EnablingRules.h"

#include <algorithm>
#include <array>

#include "ui/form/Form.h"

namespace corvane {

namespace {

bool IsOn(const Control& control) {
    switch (control.spec().kind) {
        case ControlKind::CheckBox:
            return static_cast<const CheckBox&>(control).checked();
        case ControlKind::OptionButton:
            return static_cast<const OptionButton&>(control).selected();
        default:
            return false;
    }
}

bool GoldMineAllows(const Form& form, const Control& control) {
    return form.GoldMineVersionOK || !control.spec().has(ControlTrait::needsGoldMine67);
}

void EnableChildrenOf(Form& form, const Control& parent) {
    const auto isChild = [&parent](const Control* control) {
        return control->spec().enabledBy == parent.spec().name;
    };
    const bool enabled = parent.enabled() && IsOn(parent);
    for (Control* control : form.controls()) {
        if (isChild(control))
            control->setEnabled(enabled && GoldMineAllows(form, *control));
    }
    for (const Control* control : form.controls()) {
        if (isChild(control))
            EnableChildrenOf(form, *control);
    }
}

void DisableWithoutMasterSwitch(Form& form) {
    if (form.chkGlobalEnable.value() != CheckBox::unchecked)
        return;
    const std::array<const Control*, 5> usable = {
        &form.frameOptions(form.tabstripOptions.selectedTab()), &form.frameGlobal,
        &form.chkGlobalEnable, &form.cmdSaveSettings, &form.cmdExit};
    // A usable one is not even disabled in passing: that would take the focus from it. They come
    // first, so that the focus of a disabled one has somewhere to go.
    const auto staysUsable = [&](const Control* control) {
        return std::find(usable.begin(), usable.end(), control) != usable.end();
    };
    for (const bool enabled : {true, false}) {
        for (Control* control : form.controls()) {
            if (staysUsable(control) == enabled)
                control->setEnabled(enabled);
        }
    }
}

}  // namespace

void RunEnablingRules(Form& form, const Control& changed) {
    if (&changed == &form.chkGlobalEnable)
        DisableWithoutMasterSwitch(form);
    else
        EnableChildrenOf(form, changed);
}

void RunEnablingRulesOnActivation(Form& form) {
    EnableChildrenOf(form, form.chkAlwaysShowForm);
    DisableWithoutMasterSwitch(form);
}

void RunAllEnablingRules(Form& form) {
    for (Control* control : form.controls()) {
        if (!control->spec().enabledBy.empty())
            continue;
        if (control->spec().has(ControlTrait::needsGoldMine67))
            control->setEnabled(form.GoldMineVersionOK);
        EnableChildrenOf(form, *control);
    }
    DisableWithoutMasterSwitch(form);
}

}  // namespace corvane
