#include "ui/form/EnablingRules.h"

#include <algorithm>
#include <array>

#include "ui/form/Form.h"

namespace corvane {

namespace {

bool EnabledAndChecked(const CheckBox& box) {
    return box.enabled() && box.checked();
}

}  // namespace

void EnablingRules::Run(const Control& changed) const {
    struct Rule {
        const Control& controlling;
        void (EnablingRules::*run)() const;
    };
    const Rule rules[] = {
        {form_.chkGlobalEnable, &EnablingRules::GlobalEnable},
        {form_.chkTrimOutboundPrefix, &EnablingRules::TrimOutboundPrefix},
        {form_.chkIgnoreShortCallerID, &EnablingRules::IgnoreShortCallerID},
        {form_.chkPopOnInboundCall, &EnablingRules::PopOnInboundCall},
        {form_.chkCreateHistory, &EnablingRules::CreateHistory},
        {form_.chkCreateLink, &EnablingRules::CreateLink},
        {form_.chkDelayAddingLink, &EnablingRules::DelayAddingLink},
        {form_.chkConfirmRecentRecordingFile, &EnablingRules::ConfirmRecentRecordingFile},
        {form_.chkAutoOpenHistory, &EnablingRules::AutoOpenHistory},
        {form_.optOpenHistoryBeforeSaving, &EnablingRules::OpenHistoryBeforeSaving},
        {form_.chkAlwaysShowForm, &EnablingRules::AlwaysShowForm},
    };
    for (const Rule& rule : rules) {
        if (&rule.controlling == &changed)
            (this->*rule.run)();
    }
}

void EnablingRules::RunOnActivation() const {
    AlwaysShowForm();
    GlobalEnable();
}

void EnablingRules::RunAll() const {
    SearchPhone123();
    TrimOutboundPrefix();
    IgnoreShortCallerID();
    PopOnInboundCall();
    CreateHistory();
    AlwaysShowForm();
    GlobalEnable();
}

void EnablingRules::GlobalEnable() const {
    if (form_.chkGlobalEnable.value() != CheckBox::unchecked)
        return;
    const std::array<const Control*, 5> usable = {
        &form_.frameOptions(form_.tabstripOptions.selectedTab()), &form_.frameGlobal,
        &form_.chkGlobalEnable, &form_.cmdSaveSettings, &form_.cmdExit};
    // A usable one is not even disabled in passing: that would take the focus from it. They come
    // first, so that the focus of a disabled one has somewhere to go.
    const auto staysUsable = [&](const Control* control) {
        return std::find(usable.begin(), usable.end(), control) != usable.end();
    };
    for (const bool enabled : {true, false}) {
        for (Control* control : form_.controls()) {
            if (staysUsable(control) == enabled)
                control->setEnabled(enabled);
        }
    }
}

void EnablingRules::TrimOutboundPrefix() const {
    form_.txtOutboundMaxLength.setEnabled(EnabledAndChecked(form_.chkTrimOutboundPrefix));
}

void EnablingRules::IgnoreShortCallerID() const {
    form_.txtCallerIDMinLength.setEnabled(EnabledAndChecked(form_.chkIgnoreShortCallerID));
}

void EnablingRules::PopOnInboundCall() const {
    const bool enabled = form_.chkPopOnInboundCall.checked();
    form_.optPopOnInboundCallStart.setEnabled(enabled);
    form_.optPopOnInboundCallConnect.setEnabled(enabled);
}

void EnablingRules::CreateHistory() const {
    const bool enabled = form_.chkCreateHistory.checked();
    form_.optProcessStart.setEnabled(enabled);
    form_.optProcessConnect.setEnabled(enabled);
    form_.optProcessEnd.setEnabled(enabled);
    form_.chkFillInRef.setEnabled(enabled);
    form_.chkAutoOpenHistory.setEnabled(enabled && form_.GoldMineVersionOK);
    form_.chkCreateLink.setEnabled(enabled);
    AutoOpenHistory();
    CreateLink();
}

void EnablingRules::CreateLink() const {
    const bool enabled = EnabledAndChecked(form_.chkCreateLink);
    form_.txtLinkedItemPath.setEnabled(enabled);
    form_.chkDelayAddingLink.setEnabled(enabled);
    form_.lblDelayAddingLinkSeconds.setEnabled(enabled);
    form_.chkConfirmRecentRecordingFile.setEnabled(enabled);
    form_.lblRecordingFileMaxAgeSeconds.setEnabled(enabled);
    form_.chkConfirmLinkCallIdentifier.setEnabled(enabled);
    ConfirmRecentRecordingFile();
    DelayAddingLink();
}

void EnablingRules::DelayAddingLink() const {
    form_.txtDelayAddingLinkSeconds.setEnabled(EnabledAndChecked(form_.chkDelayAddingLink));
}

void EnablingRules::ConfirmRecentRecordingFile() const {
    form_.txtRecordingFileMaxAgeSeconds.setEnabled(
        EnabledAndChecked(form_.chkConfirmRecentRecordingFile));
}

void EnablingRules::AutoOpenHistory() const {
    const bool enabled = EnabledAndChecked(form_.chkAutoOpenHistory);
    form_.optOpenHistoryBeforeSaving.setEnabled(enabled);
    form_.optOpenHistoryAfterSaving.setEnabled(enabled);
    OpenHistoryBeforeSaving();
}

void EnablingRules::OpenHistoryBeforeSaving() const {
    const OptionButton& before = form_.optOpenHistoryBeforeSaving;
    const bool enabled = before.enabled() && before.selected();
    form_.optCompleteScheduledCall.setEnabled(enabled);
    form_.optCompleteUnscheduledCall.setEnabled(enabled);
}

void EnablingRules::AlwaysShowForm() const {
    form_.chkAutoProcess.setEnabled(form_.chkAlwaysShowForm.checked());
}

void EnablingRules::SearchPhone123() const {
    form_.optPhone123.setEnabled(form_.GoldMineVersionOK);
}

}  // namespace corvane
