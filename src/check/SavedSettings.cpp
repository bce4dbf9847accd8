#include "check/SavedSettings.h"

#include "seams/Conversions.h"
#include "settings/cSimuIniFile.h"
#include "settings/OptionText.h"
#include "settings/Settings.h"
#include "settings/SettingsCatalogue.h"
#include "ui/form/FieldChecks.h"
#include "ui/form/Form.h"
#include "util/RuntimeError.h"

namespace corvane {

namespace {

// As the code that uses a box for a number reads it.
bool Converts(const std::wstring& text, const NumberCheck& check) {
    try {
        static_cast<void>(check.anyNumber ? LongLongFromText(text) : LongFromText(text));
        return true;
    } catch (const RuntimeError&) {
        return false;
    }
}

}  // namespace

std::vector<UnfitSetting> LoadSavedSettings(Form& form, Registry& registry) {
    std::vector<UnfitSetting> unfit;
    cSimuIniFile store = OwnSettingsStore(registry);
    const auto load = [&](Control& option) {
        const std::wstring stored = store.ReadProfileString(option.name(), option.tag());
        try {
            LoadOption(option, store);
        } catch (const RuntimeError&) {
            SetOptionFromText(option, option.tag());
            unfit.push_back({option.name(), stored, false});
            return;
        }
        const NumberCheck* check = option.spec().number;
        if (!check)
            return;
        auto& box = static_cast<TextBox&>(option);
        const bool converts = Converts(box.text(), *check);
        if (!converts || !Passes(box.text(), *check))
            unfit.push_back({option.name(), stored, converts});
        if (!converts)
            box.setText(option.tag());
    };
    for (const std::size_t row : savedOptions)
        load(*form.controls()[row]);
    load(form.chkWriteLog);
    return unfit;
}

}  // namespace corvane
