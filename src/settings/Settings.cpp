#include "settings/Settings.h"

#include <string>

#include "seams/MessageBoxes.h"
#include "seams/StatusWriter.h"
#include "settings/cSimuIniFile.h"
#include "settings/OptionText.h"
#include "settings/SettingsCatalogue.h"
#include "ui/form/Form.h"
#include "util/RuntimeError.h"
#include "util/Text.h"

namespace corvane {

namespace {

// What GoldMine is too old for: of a group, another member is selected instead.
void SwitchOff(const Form& form, Control& option) {
    if (option.spec().kind == ControlKind::CheckBox) {
        static_cast<CheckBox&>(option).setChecked(false);
    } else {
        const auto group = form.GroupOf(static_cast<OptionButton&>(option));
        group[group.front() == &option ? 1 : 0]->setSelected(true);
    }
}

}  // namespace

void LoadOption(Control& option, cSimuIniFile& store) {
    NamedProcedure(option.name(), [&] {
        SetOptionFromText(option, store.ReadProfileString(option.name(), option.tag()));
    });
}

// The registry keeps texts in the system's code page, which does not hold every character.
void Settings::SaveOption(const Control& option, cSimuIniFile& store) {
    NamedProcedure(option.name(), [&] {
        const std::wstring text = OptionText(option);
        store.WriteProfileString(option.name(), text);
        if (store.ReadProfileString(option.name(), L"") != text) {
            status_.WriteStatus(Join(L"Setting ", option.name(),
                                     L" holds characters that cannot be saved; they were saved as "
                                     L"\"?\"."));
        }
    });
}

Settings::Settings(Form& form, Registry& registry, StatusWriter& status, MessageBoxes& boxes)
    : form_(form), registry_(registry), status_(status), boxes_(boxes) {}

void Settings::LoadSettings() {
    NamedProcedure(L"LoadSettings", [this] {
        cSimuIniFile store = OwnSettingsStore(registry_);
        for (const std::size_t row : savedOptions)
            LoadOption(*form_.controls()[row], store);
    });
    form_.SettingsDirty = false;
}

bool Settings::SaveSettings() {
    if (form_.txtLinkedItemPath.enabled() && form_.chkCreateLink.checked() &&
        form_.txtLinkedItemPath.text().empty()) {
        boxes_.Notify(L"Please specify a folder or uncheck \"add link\"");
        form_.SetFocus(form_.txtLinkedItemPath);
        return false;
    }
    NamedProcedure(L"SaveSettings", [this] {
        cSimuIniFile store = OwnSettingsStore(registry_);
        for (const std::size_t row : savedOptions)
            SaveOption(*form_.controls()[row], store);
        SaveOption(form_.chkWriteLog, store);
    });
    status_.WriteStatus(L"Settings saved.");
    form_.SettingsDirty = false;
    return true;
}

void Settings::RestoreDefaults() {
    for (const std::size_t row : restoredOptions) {
        Control& option = *form_.controls()[row];
        if (option.spec().has(ControlTrait::needsGoldMine67) && !form_.GoldMineVersionOK)
            SwitchOff(form_, option);
        else
            SetOptionFromText(option, option.tag());
    }
}

}  // namespace corvane
