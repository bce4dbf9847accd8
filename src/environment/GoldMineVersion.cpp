#include "environment/GoldMineVersion.h"

#include <optional>
#include <string>

#include "dialing/GoldMineIniSetup.h"
#include "gmapi/Macro.h"
#include "seams/Conversions.h"
#include "seams/MessageBoxes.h"
#include "seams/StatusWriter.h"
#include "ui/form/EnablingRules.h"
#include "ui/form/Form.h"
#include "util/RuntimeError.h"
#include "util/Text.h"

namespace corvane {

namespace {

// Whether a version is 6.7 or later; nothing when the text is no version.
std::optional<bool> IsRecentEnough(const std::wstring& version) {
    const auto point = version.find(L'.');
    if (point == std::wstring::npos)
        return std::nullopt;
    try {
        const std::int32_t major = LongFromText(version.substr(0, point));
        if (major != 6)
            return major >= 7;
        // One digit of the minor version only: "6.10" counts as minor 1.
        return LongFromText(version.substr(point + 1, 1)) >= 7;
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
}

}  // namespace

GoldMineVersion::GoldMineVersion(Form& form, Macro& macro, GoldMineIniSetup& iniSetup,
                                 StatusWriter& status, MessageBoxes& boxes)
    : form_(form), macro_(macro), iniSetup_(iniSetup), status_(status), boxes_(boxes) {}

bool GoldMineVersion::Meet() {
    if (met_)
        return true;
    bool versionOK = false;
    if (!CheckGoldMineVersion(versionOK))
        return false;
    form_.GoldMineVersionOK = versionOK;
    met_ = ApplyGoldMineVersion();
    return met_;
}

bool GoldMineVersion::CheckGoldMineVersion(bool& versionOK) {
    return NamedProcedure(L"CheckGoldMineVersion", [&] { return ReadVersion(versionOK); });
}

bool GoldMineVersion::ReadVersion(bool& versionOK) {
    versionOK = false;
    const auto version = macro_.Version();
    if (!version)
        return Fail(L"Error retrieving GoldMine version.");
    const auto recentEnough = IsRecentEnough(*version);
    if (!recentEnough)
        return Fail(Join(L"Error parsing GoldMine version ", *version));
    versionOK = *recentEnough;
    status_.WriteStatus(Join(L"GoldMine version ", *version, L" detected."));
    return true;
}

bool GoldMineVersion::Fail(std::wstring_view text) {
    boxes_.Notify(text, BoxIcon::Exclamation);
    status_.WriteStatus(text);
    return false;
}

bool GoldMineVersion::ApplyGoldMineVersion() {
    return NamedProcedure(L"ApplyGoldMineVersion", [this] {
        if (form_.GoldMineVersionOK) {
            RunAllEnablingRules(form_);
            return iniSetup_.Run();
        }
        constexpr std::wstring_view tooOld = L"Corvane requires GoldMine 6.7 or later. Exiting.";
        status_.WriteStatus(tooOld);
        boxes_.Notify(tooOld);
        return false;
    });
}

}  // namespace corvane
