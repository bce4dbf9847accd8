#include "app/Shutdown.h"

#include "environment/GoldMineProcess.h"
#include "gmapi/GMUI.h"
#include "gmapi/WindowCommands.h"
#include "seams/Clock.h"
#include "seams/MessageBoxes.h"
#include "seams/StatusWriter.h"
#include "settings/Settings.h"
#include "ui/form/Form.h"
#include "util/ErrorReport.h"
#include "util/Text.h"

namespace corvane {

namespace {

constexpr int mostWaits = 10;
constexpr std::uint32_t waitMilliseconds = 1000;

}  // namespace

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
    WindowCommands& windows = parts_.windows;
    if (!windows.CallDialogRegistered())
        return;
    for (int wait = 1; windows.WatchingCallDialog() && wait <= mostWaits; ++wait) {
        parts_.status.WriteStatus(Join(L"Waiting for history Ref and Notes to be filled in: ",
                                       std::to_wstring(wait), L" second(s)"));
        parts_.clock.PumpEvents();
        parts_.clock.Sleep(waitMilliseconds);
    }
    parts_.clock.PumpEvents();
    if (parts_.goldMineProcess.FindGoldMineExecutable()) {
        // A refusal changes nothing: the program ends.
        static_cast<void>(windows.RegisterWindowUpDown(completeCallWindow, false));
    }
}

}  // namespace corvane
