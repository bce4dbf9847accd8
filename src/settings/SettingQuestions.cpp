#include "settings/SettingQuestions.h"

#include "seams/MessageBoxes.h"
#include "settings/Settings.h"
#include "ui/form/Form.h"

namespace corvane {

SettingQuestions::SettingQuestions(Form& form, Settings& settings, MessageBoxes& boxes)
    : form_(form), settings_(settings), boxes_(boxes) {}

void SettingQuestions::ClickGlobalEnable() {
    const bool wasDirty = form_.SettingsDirty;
    form_.chkGlobalEnable.setChecked(!form_.chkGlobalEnable.checked());
    if (!form_.chkGlobalEnable.checked())
        return;

    if (!boxes_.Confirm(L"The program must be reloaded to re-enable the link between GoldMine and "
                        L"3CX. Okay to save your settings and exit? You can then re-start the "
                        L"program.")) {
        form_.chkGlobalEnable.setChecked(false);
        form_.SettingsDirty = wasDirty;
        return;
    }
    try {
        if (settings_.SaveSettings())
            form_.Close();
    } catch (...) {
        // The program goes on without the link, so the box must say so. What was saved until then
        // is another matter: the settings stay to be saved.
        form_.chkGlobalEnable.setChecked(false);
        throw;
    }
}

void SettingQuestions::ClickSearchInAddlContacts() {
    const bool wasDirty = form_.SettingsDirty;
    form_.chkSearchInAddlContacts.setChecked(!form_.chkSearchInAddlContacts.checked());
    if (!form_.chkSearchInAddlContacts.checked())
        return;

    if (!boxes_.Confirm(L"Has your system administrator added database indexes on the "
                        L"ContSupp.Phone and ContSupp.Fax fields? This is required in order for "
                        L"this function to work efficiently.")) {
        form_.chkSearchInAddlContacts.setChecked(false);
        form_.SettingsDirty = wasDirty;
    }
}

}  // namespace corvane
