// This user's settings and log, and what of the program runs already.

#include <array>
#include <string>
#include <vector>

#include "check/ReadOnly.h"
#include "check/SavedSettings.h"
#include "check/Survey.h"
#include "check/wiring/Links.h"
#include "environment/LogPlace.h"
#include "ui/form/Form.h"
#include "util/Text.h"

namespace corvane {

namespace {

constexpr std::wstring_view systemHangs = L"See whether this computer is very busy.";
constexpr auto linksOfUser = std::to_array<Link>({
    {L"settings", systemHangs},
    {L"master switch", systemHangs},
    {L"log", systemHangs},
    {L"waiting boxes", systemHangs},
});

Finding LookAtSettings(const std::vector<UnfitSetting>& unfit) {
    if (unfit.empty())
        return {LinkState::Ok, L"all convert"};
    Finding finding{LinkState::Warning,
                    {},
                    L"Correct them in the program's window and save them; "
                    L"else delete the values in the registry: missing ones "
                    L"count as their defaults."};
    for (const UnfitSetting& setting : unfit) {
        if (setting.converts) {
            finding.text += Join(finding.text.empty() ? L"" : L"; ", setting.name, L" ",
                                 Quoted(setting.text), L" is out of range");
        } else {
            finding.state = LinkState::Broken;
            finding.text += Join(finding.text.empty() ? L"" : L"; ", setting.name, L" ",
                                 Quoted(setting.text), L" does not convert");
        }
    }
    return finding;
}

Finding LookAtMasterSwitch(const Form& form) {
    if (form.chkGlobalEnable.value() != CheckBox::unchecked)
        return {LinkState::Ok, L"on"};
    return {LinkState::Broken, L"off: no call is handled",
            L"Check \"Enable link between GoldMine and 3CX\" in the program's window."};
}

Finding LookAtLog(const CheckSurroundings& around, const Form& form) {
    ReadOnlyFiles files(around.files);
    const std::wstring path = LogPath(around.shell, files, around.program.executableName);
    if (path.empty())
        return {LinkState::Broken, L"there is no folder of common application data", L""};
    const bool on = form.chkWriteLog.checked();
    const std::wstring why = around.survey.WhyNotAppendTo(path);
    if (!why.empty()) {
        const std::wstring folder = path.substr(0, path.find_last_of(L'\\'));
        return {
            on ? LinkState::Broken : LinkState::Warning, Join(path, L" cannot be written: ", why),
            Join(L"As administrator: icacls ", Quoted(folder), L" /grant *S-1-5-32-545:(OI)(CI)M")};
    }
    return {LinkState::Ok, Join(path, on ? L"" : L" (off: errors only)")};
}

Finding LookAtInstances(const CheckSurroundings& around) {
    const std::wstring name = around.program.executableName + L".exe";
    const auto session = around.processes.SessionOf(around.processes.OwnProcessId()).value;
    int running = 0;
    std::wstring waiting;
    for (const ProcessEntry& entry : around.processes.Snapshot()) {
        if (StripAtNull(entry.nameField) != name ||
            around.processes.SessionOf(entry.id).value != session) {
            continue;
        }
        ++running;
        for (const std::wstring& box : around.survey.BoxesOf(entry.id)) {
            waiting += Join(waiting.empty() ? L"" : L"; ", L"process ", std::to_wstring(entry.id),
                            L" says: ", ReplaceAll(ReplaceAll(box, lineBreak, L" "), L"\n", L" "));
        }
    }
    if (!waiting.empty())
        return {LinkState::Warning, waiting, L"Answer the box: that call waits for it."};
    if (running == 0)
        return {LinkState::Ok, L"none; the program is not running"};
    return {LinkState::Ok, Join(L"none; instances that run: ", std::to_wstring(running))};
}

void LookAtUser(const CheckSurroundings& around, Findings& findings) {
    Form form;
    findings.Tell(LookAtSettings(LoadSavedSettings(form, around.registry)));
    findings.Tell(LookAtMasterSwitch(form));
    findings.Tell(LookAtLog(around, form));
    findings.Tell(LookAtInstances(around));
}

}  // namespace

const LinkGroup userLinks{linksOfUser, &LookAtUser};

}  // namespace corvane
