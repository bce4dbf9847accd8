#include "app/Shutdown.h"

#include "calls/CompleteCallDialog.h"
#include "environment/GoldMineProcess.h"
#include "gmapi/GMUI.h"
#include "seams/MessageBoxes.h"
#include "seams/StatusWriter.h"
#include "settings/Settings.h"
#include "ui/form/Form.h"
#include "util/ErrorReport.h"

namespace corvane {

bool Shutdown::Unload() {
    if (unloading_)
        return false;
    unloading_ = true;
    bool goesOn = false;
    parts_.errors.Guard([&] { goesOn = SaveBeforeExit(); });
    if (!goesOn) {
        unloading_ = false;
        return false;
    }
    parts_.gmui.ConnectOnlyWhile(
        [this] { return parts_.goldMineProcess.RunningClient().has_value(); });
    // Whatever goes wrong with GoldMine here, the program ends.
    parts_.errors.Guard([this] { FinishCallDialog(); });
    parts_.gmui.Release();
    parts_.errors.Guard(
        [this] { parts_.status.WriteStatus(L"Finished unloading form and closing program."); });
    return true;
}

bool Shutdown::SaveBeforeExit() {
    Form& form = parts_.form;
    if (!form.visible() || !form.SettingsDirty)
        return true;
    switch (parts_.boxes.Show(L"Do you want to save configuration changes before exiting?",
                              BoxButtons::YesNoCancel, BoxIcon::None)) {
        case BoxAnswer::Yes: {
            bool saved = false;
            parts_.errors.Guard(
                [&] { saved = form.FinishEntry() && parts_.settings.SaveSettings(); });
            return saved;
        }
        case BoxAnswer::No:
            return true;
        default:
            return false;
    }
}

void Shutdown::FinishCallDialog() {
    // What goes wrong with the waiting leaves no registration behind.
    bool registered = true;
    parts_.errors.Guard([&] { registered = parts_.dialog.WaitUntilFilledIn(); });
    if (registered && parts_.goldMineProcess.FindGoldMineExecutable())
        parts_.dialog.Withdraw();
}

}  // namespace corvane
