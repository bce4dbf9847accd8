#include "app/UserActions.h"

#include "app/CallParameters.h"
#include "app/Shutdown.h"
#include "calls/CallInProgress.h"
#include "calls/Dispatcher.h"
#include "calls/RecordingLink.h"
#include "environment/FileOpener.h"
#include "environment/GoldMineProcess.h"
#include "environment/GoldMineVersion.h"
#include "environment/ThreeCXIntegration.h"
#include "gmapi/GMUI.h"
#include "seams/MessageBoxes.h"
#include "settings/SettingQuestions.h"
#include "settings/Settings.h"
#include "ui/form/EnablingRules.h"
#include "ui/form/FieldChecks.h"
#include "ui/form/Form.h"
#include "util/ErrorReport.h"

namespace corvane {

UserActions::UserActions(const Parts& parts) : parts_(parts) {
    Form& form = parts_.form;
    form.cmdParams.onClick = [&form] { form.ToggleParams(); };
    form.cmdDefaults.onClick = [this] { parts_.settings.RestoreDefaults(); };
    // The outcome is told by the procedure itself; the window stays either way.
    form.cmdSaveSettings.onClick = [this] { static_cast<void>(parts_.settings.SaveSettings()); };
    form.cmdProcessCall.onClick = [this] { ProcessCallByHand(); };
    form.cmdExit.onClick = [&form] { form.Close(); };
    form.cmdOpenUserINI.onClick = [this] { parts_.fileOpener.OpenUserINI(); };
    form.cmdOpenGMINI.onClick = [this] { parts_.fileOpener.OpenGMINI(); };
    form.cmdOpenLog.onClick = [this] { parts_.fileOpener.OpenLog(); };
    form.cmdOpenPluginLog.onClick = [this] { parts_.fileOpener.OpenPluginLog(); };
    form.cmdChangeLogLevel.onClick = [this] { parts_.threeCX.ChangeLogLevel(); };
}

void UserActions::ButtonClicked(CommandButton& button) {
    if (!button.enabled() || !button.onClick)
        return;
    parts_.errors.Guard([&] { button.onClick(); });
}

void UserActions::CheckBoxClicked(CheckBox& box) {
    parts_.errors.Guard([&] {
        if (&box == &parts_.form.chkGlobalEnable)
            parts_.questions.ClickGlobalEnable();
        else if (&box == &parts_.form.chkSearchInAddlContacts)
            parts_.questions.ClickSearchInAddlContacts();
        else
            box.setChecked(!box.checked());
    });
}

void UserActions::OptionClicked(OptionButton& option) {
    parts_.errors.Guard([&] { option.setSelected(true); });
}

bool UserActions::MayLeave(TextBox& box, bool changed) {
    bool mayLeave = true;
    parts_.errors.Guard([&] {
        if (&box == &parts_.form.txtLinkedItemPath) {
            mayLeave = parts_.recordingLink.MayLeaveFolder();
        } else {
            mayLeave = parts_.fieldChecks.MayLeave(box);
            parts_.parameters.LeaveParameterBox(box, changed);
        }
    });
    return mayLeave;
}

void UserActions::Activated(bool fromAnotherProgram) {
    parts_.errors.Guard([this, fromAnotherProgram] {
        RunEnablingRulesOnActivation(parts_.form);
        if (fromAnotherProgram && parts_.form.cmdProcessCall.enabled())
            parts_.form.SetFocus(parts_.form.cmdProcessCall);
    });
}

bool UserActions::MayClose() {
    if (parts_.call.busy()) {
        parts_.call.CloseAfterwards();
        return false;
    }
    bool mayClose = false;
    parts_.errors.Guard([&] { mayClose = parts_.shutdown.Unload(); });
    return mayClose;
}

void UserActions::ProcessCallByHand() {
    if (parts_.call.busy() || parts_.shutdown.unloading())
        return;
    if (!parts_.goldMineProcess.FindGoldMineExecutable()) {
        parts_.gmui.Release();
        parts_.boxes.Notify(L"Please start GoldMine before processing a call.");
        return;
    }
    parts_.form.txtStatus.setText(L"");
    if (ReadyForCall())
        parts_.dispatcher.ProcessCall();
}

bool UserActions::ReadyForCall() {
    // GoldMine's commands let the user reach the window.
    const CallInProgress::Part part(parts_.call);
    return !parts_.parameters.CallerIDRejected() && parts_.goldMineVersion.Meet();
}

}  // namespace corvane
