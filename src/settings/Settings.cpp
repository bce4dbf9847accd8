#include "settings/Settings.h"

#include "seams/MessageBoxes.h"
#include "seams/StatusWriter.h"
#include "settings/cSimuIniFile.h"
#include "settings/OptionText.h"
#include "settings/SettingsCatalogue.h"
#include "ui/form/Form.h"

namespace corvane {

Settings::Settings(Form& form, Registry& registry, StatusWriter& status, MessageBoxes& boxes)
    : form_(form), registry_(registry), status_(status), boxes_(boxes) {}

void Settings::LoadSettings() {
    cSimuIniFile store = OwnSettingsStore(registry_);
    for (const std::wstring_view name : savedOptions) {
        Control& option = form_.control(name);
        SetOptionFromText(option, store.ReadProfileString(option.name(), option.tag()));
    }
    form_.SettingsDirty = false;
}

bool Settings::SaveSettings() {
    if (form_.txtLinkedItemPath.enabled() && form_.chkCreateLink.checked() &&
        form_.txtLinkedItemPath.text().empty()) {
        boxes_.Notify(L"Please specify a folder or uncheck \"add link\"");
        form_.SetFocus(form_.txtLinkedItemPath);
        return false;
    }
    cSimuIniFile store = OwnSettingsStore(registry_);
    for (const std::wstring_view name : savedOptions) {
        const Control& option = form_.control(name);
        store.WriteProfileString(option.name(), OptionText(option));
    }
    if (afterSave_)
        afterSave_();
    status_.WriteStatus(L"Settings saved.");
    form_.SettingsDirty = false;
    return true;
}

void Settings::RestoreDefaults() {
    for (const std::wstring_view name : restoredOptions) {
        Control& option = form_.control(name);
        // Searching Phone2 and Phone3 and opening the history item need GoldMine 6.7.
        if (&option == &form_.optPhone123 && !form_.GoldMineVersionOK)
            form_.optPhone1Only.setSelected(true);
        else if (&option == &form_.chkAutoOpenHistory && !form_.GoldMineVersionOK)
            form_.chkAutoOpenHistory.setChecked(false);
        else
            SetOptionFromText(option, option.tag());
    }
}

}  // namespace corvane
