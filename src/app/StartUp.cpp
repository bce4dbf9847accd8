#include "app/StartUp.h"

#include "app/AboutText.h"
#include "app/Status.h"
#include "calls/Dispatcher.h"
#include "environment/GoldMineProcess.h"
#include "environment/GoldMineVersion.h"
#include "environment/ThreeCXIntegration.h"
#include "seams/MessageBoxes.h"
#include "settings/Settings.h"
#include "ui/form/EnablingRules.h"
#include "ui/form/Form.h"
#include "util/ErrorReport.h"
#include "util/Text.h"

namespace corvane {

namespace {

constexpr std::wstring_view configurationError = L"Error loading configuration. Exiting.";

}  // namespace

RunOutcome StartUp::Run() {
    Form& form = parts_.form;
    form.setCaption(productName);
    if (!LoadConfiguration()) {
        parts_.boxes.Notify(configurationError, BoxIcon::Critical);
        // A registry that cannot be read can seldom be written; the box has said enough.
        static_cast<void>(Succeeds([this] {
            parts_.status.ResetRunNumber();
            return true;
        }));
        return RunOutcome::End;
    }
    form.txtAbout.setText(AboutText(parts_.program, form.txtLogPath.text()));

    const ParsedParameters parsed = parts_.parameters.ParseCallParameters();
    if (!parsed.ParseOK)
        return RunOutcome::End;
    if (form.chkGlobalEnable.value() == CheckBox::unchecked)
        return StayDisabled(parsed.ParamsFound);
    if (!PrepareGoldMine(parsed.ParamsFound))
        return RunOutcome::End;

    form.cmdProcessCall.setEnabled(parsed.ParamsFound);
    if (!parsed.ParamsFound) {
        parts_.status.WriteStatus(
            L"Program was started without params. Process Call button disabled.");
    }
    return RunInMode(parsed.ParamsFound);
}

bool StartUp::LoadConfiguration() {
    return Succeeds([this] {
        parts_.status.SetUpLog();
        parts_.settings.LoadSettings();
        parts_.threeCX.Discover();
        return true;
    });
}

bool StartUp::Succeeds(const std::function<bool()>& step) {
    try {
        return step();
    } catch (...) {
        // The box to come does not say why.
        parts_.errors.WriteLine(ErrorReport::CurrentError());
        return false;
    }
}

RunOutcome StartUp::StayDisabled(bool paramsFound) {
    Form& form = parts_.form;
    parts_.status.WriteStatus(
        L"Corvane to 3CX disabled--the \"Master Switch\" is unchecked. No connection to GoldMine "
        L"attempted.");
    form.cmdProcessCall.setEnabled(false);
    if (paramsFound && !form.chkAlwaysShowForm.checked())
        return RunOutcome::End;
    RunAllEnablingRules(form);
    form.setVisible(true);
    return RunOutcome::WindowShown;
}

bool StartUp::PrepareGoldMine(bool paramsFound) {
    Form& form = parts_.form;
    if (!parts_.goldMineProcess.FindGoldMineExecutable()) {
        parts_.status.WriteStatus(L"GoldMine not running, so version unknown.");
        if (paramsFound) {
            parts_.status.WriteStatus(L"Parameters found but GoldMine not running. Exiting.");
            return false;
        }
        form.GoldMineVersionOK = true;
        RunAllEnablingRules(form);
        return true;
    }
    if (Succeeds([this] { return parts_.goldMineVersion.Meet(); }))
        return true;
    parts_.boxes.Notify(configurationError, BoxIcon::Critical);
    return false;
}

RunOutcome StartUp::RunInMode(bool paramsFound) {
    Form& form = parts_.form;
    const bool show = form.chkAlwaysShowForm.checked() || !paramsFound;
    if (!show) {
        parts_.dispatcher.ProcessCall();
        return RunOutcome::End;
    }
    form.setVisible(true);
    // The user may have started GoldMine meanwhile. One whose path could not be read was told of.
    if (!parts_.goldMineProcess.clientFound())
        parts_.goldMineProcess.FindGoldMineExecutable();
    if (form.chkAlwaysShowForm.checked() && form.chkAutoProcess.checked() && paramsFound) {
        // The window stays open whatever comes of the call.
        parts_.errors.Guard([this] { parts_.dispatcher.ProcessCall(); });
    }
    return RunOutcome::WindowShown;
}

}  // namespace corvane
