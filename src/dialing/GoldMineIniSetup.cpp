#include "dialing/GoldMineIniSetup.h"

#include "gmapi/Macro.h"
#include "seams/FileSystem.h"
#include "seams/IniFiles.h"
#include "seams/MessageBoxes.h"
#include "seams/StatusWriter.h"
#include "ui/form/Form.h"
#include "util/Text.h"

namespace corvane {

namespace {

constexpr std::wstring_view modemSection = L"Modem";

}  // namespace

GoldMineIniSetup::GoldMineIniSetup(Form& form, Macro& macro, FileSystem& files, IniFiles& iniFiles,
                                   StatusWriter& status, MessageBoxes& boxes)
    : form_(form),
      macro_(macro),
      files_(files),
      iniFiles_(iniFiles),
      status_(status),
      boxes_(boxes) {}

bool GoldMineIniSetup::Run() {
    wroteValue_ = false;
    if (!FindIniFiles() || !DefineDummyModem() || !DefineDialingInstruction() ||
        !DialNumbersAsEntered()) {
        return false;
    }
    if (wroteValue_)
        boxes_.Notify(L"Please close and restart GoldMine to load the updated <user>.INI file.");
    return true;
}

bool GoldMineIniSetup::FindIniFiles() {
    auto folder = macro_.ProgramDataDir();
    if (!folder || folder->empty())
        folder = macro_.SysDir();
    if (!folder || folder->empty())
        return Fail(L"Could not retrieve ProgramDataDir or SysDir", BoxIcon::Exclamation);
    const auto user = macro_.UserName();
    if (!user)
        return Fail(L"Could not retrieve UserName", BoxIcon::Exclamation);
    form_.GoldMineUserName = *user;

    const std::wstring userIniPath = Join(*folder, *user, L".INI");
    form_.txtGoldMineUserIniPath.setText(userIniPath);
    if (!files_.FileExists(userIniPath)) {
        return Fail(Join(L"Could not find GoldMine <user>.INI file", lineBreak, userIniPath),
                    BoxIcon::Exclamation);
    }
    LearnWhetherNotesAreHTML(Join(*folder, L"GM.INI"));
    return true;
}

void GoldMineIniSetup::LearnWhetherNotesAreHTML(const std::wstring& gmIniPath) {
    form_.txtGoldMineGMIniPath.setText(gmIniPath);
    form_.NotesAreHTML = false;
    if (!files_.FileExists(gmIniPath)) {
        boxes_.Notify(Join(L"Could not find GoldMine GM.INI file", lineBreak, gmIniPath),
                      BoxIcon::Exclamation);
        return;
    }
    form_.NotesAreHTML = iniFiles_.ReadIniValue(L"GoldMine", L"HTML_Cal_Notes", gmIniPath) != L"0";
}

bool GoldMineIniSetup::KnowsModem() const {
    const std::wstring deviceId = ReadModem(L"DeviceID");
    return !deviceId.empty() && deviceId != L"-1";
}

bool GoldMineIniSetup::DialsThroughUs() const {
    return DialingInstruction() == OwnDialingInstruction();
}

bool GoldMineIniSetup::DialsAsEntered() const {
    const std::wstring translation = ReadModem(L"TAPITranslation");
    return !translation.empty() && translation != L"1";
}

std::wstring GoldMineIniSetup::DialingInstruction() const {
    return ReadModem(L"DDEDial");
}

std::wstring GoldMineIniSetup::OwnDialingInstruction() const {
    return Join(L"&Dial,,", form_.txtAppPath.text(), L" %s");
}

bool GoldMineIniSetup::DefineDummyModem() {
    if (KnowsModem())
        return true;
    return WriteModem(
        L"Okay to define a dummy modem in your GoldMine <user>.INI file? This is required for "
        L"outbound dialing via 3CX.",
        L"DeviceID", L"0", L" [Modem] section with a dummy modem.");
}

bool GoldMineIniSetup::DefineDialingInstruction() {
    const std::wstring expected = OwnDialingInstruction();
    const std::wstring current = DialingInstruction();
    if (current == expected)
        return true;
    const std::wstring paragraph = Join(lineBreak, lineBreak);
    const std::wstring question =
        current.empty()
            ? std::wstring(
                  L"Okay to add a DDEDial instruction to your GoldMine <user>.INI file? "
                  L"This is required for outbound dialing via 3CX.")
            : Join(L"Your GoldMine <user>.INI file already has this DDEDial instruction:",
                   paragraph, current, paragraph,
                   L"Okay to change that to point to Corvane to 3CX? The new instruction will be:",
                   paragraph, expected);
    return WriteModem(question, L"DDEDial", expected,
                      L" [Modem] section with the needed DDEDial instruction.");
}

bool GoldMineIniSetup::DialNumbersAsEntered() {
    if (DialsAsEntered())
        return true;
    return WriteModem(
        L"Okay to set GoldMine to \"Dial numbers as entered\" instead of formatting using TAPI? "
        L"This is required for outbound dialing via 3CX.",
        L"TAPITranslation", L"0", L" [Modem] section with TAPITranslation=0.");
}

std::wstring GoldMineIniSetup::ReadModem(std::wstring_view key) const {
    return iniFiles_.ReadIniValue(std::wstring(modemSection), std::wstring(key),
                                  form_.txtGoldMineUserIniPath.text());
}

bool GoldMineIniSetup::Fail(std::wstring_view text, BoxIcon icon) {
    boxes_.Notify(text, icon);
    WriteReason(text);
    return false;
}

void GoldMineIniSetup::WriteReason(std::wstring_view text) {
    status_.WriteStatus(ReplaceAll(text, lineBreak, L" "));
}

bool GoldMineIniSetup::WriteModem(std::wstring_view question, std::wstring_view key,
                                  std::wstring_view value, std::wstring_view failure) {
    if (!boxes_.Confirm(question)) {
        WriteReason(Join(L"Declined: ", question));
        return false;
    }
    KeepCopy();
    const std::wstring& userIniPath = form_.txtGoldMineUserIniPath.text();
    if (!iniFiles_.WriteIniValue(std::wstring(modemSection), std::wstring(key), std::wstring(value),
                                 userIniPath)) {
        return Fail(Join(L"Failed to update ", userIniPath, failure), BoxIcon::None);
    }
    wroteValue_ = true;
    return true;
}

void GoldMineIniSetup::KeepCopy() {
    const std::wstring& userIniPath = form_.txtGoldMineUserIniPath.text();
    const std::wstring copy = userIniPath + L".bak-CorvaneTo3CX";
    // The user has asked for the change, so it is made in any case.
    if (!files_.CopyToNew(userIniPath, copy))
        status_.WriteStatus(Join(L"Could not copy ", userIniPath, L" to ", copy, L"."));
}

}  // namespace corvane
