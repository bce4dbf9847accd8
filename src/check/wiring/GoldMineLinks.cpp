// GoldMine as it runs in this session. It is asked for macros only.

#include <array>
#include <string>
#include <utility>

#include "check/ReadOnly.h"
#include "check/Survey.h"
#include "check/Talk.h"
#include "check/wiring/Links.h"
#include "dialing/GoldMineIniSetup.h"
#include "environment/GoldMineProcess.h"
#include "environment/GoldMineVersion.h"
#include "gmapi/GMUI.h"
#include "gmapi/Macro.h"
#include "ui/form/Form.h"
#include "util/RuntimeError.h"
#include "util/Text.h"

namespace corvane {

namespace {

constexpr std::wstring_view goldMineHangs =
    L"See whether GoldMine waits in a box or is busy; else close and restart it.";
constexpr auto linksToGoldMine = std::to_array<Link>({
    {L"GoldMine", goldMineHangs},
    {L"automation class", goldMineHangs},
    {L"log-in", goldMineHangs},
    {L"version", goldMineHangs},
    {L"INI files", goldMineHangs},
    {L"modem: DeviceID", goldMineHangs},
    {L"modem: DDEDial", goldMineHangs},
    {L"modem: TAPITranslation", goldMineHangs},
    {L"notes", goldMineHangs},
});

std::wstring OneLine(std::wstring_view text) {
    return std::wstring(TrimBlanks(ReplaceAll(ReplaceAll(text, lineBreak, L" "), L"  ", L" ")));
}

// Whether GoldMine can be spoken to; what is found is told.
bool LookAtProcess(const CheckSurroundings& around, GoldMineProcess& process, const Form& form,
                   const Talk& talk, Findings& findings) {
    const bool pathKnown = process.FindGoldMineExecutable();
    if (!process.clientFound()) {
        findings.Tell({LinkState::Warning, L"is not running in this session: calls are not handled",
                       L"Start GoldMine and log in."});
        return false;
    }
    const auto elevated = around.survey.Elevated(process.RunningClient().value_or(0));
    const auto ownElevated = around.survey.Elevated(around.processes.OwnProcessId());
    constexpr std::wstring_view notAsAdministrator =
        L"Close GoldMine and start it without \"Run as administrator\".";
    if (!pathKnown) {
        findings.Tell({LinkState::Broken, OneLine(talk.last()), std::wstring(notAsAdministrator)});
        return false;
    }
    if (ownElevated == true && elevated == false) {
        findings.Tell({LinkState::Warning,
                       Join(form.GoldMineExePath,
                            L"; CorvaneCheck runs as administrator, and "
                            L"would start another GoldMine"),
                       L"Start CorvaneCheck as the user who runs GoldMine."});
        return false;
    }
    if (elevated == true && ownElevated == true) {
        findings.Tell({LinkState::Ok, Join(form.GoldMineExePath,
                                           L", as administrator like "
                                           L"CorvaneCheck")});
        return true;
    }
    if (elevated == true) {
        findings.Tell({LinkState::Warning, Join(form.GoldMineExePath, L" runs as administrator"),
                       std::wstring(notAsAdministrator)});
        return true;
    }
    findings.Tell({LinkState::Ok, form.GoldMineExePath});
    return true;
}

// Whether it is registered.
bool LookAtAutomationClass(const CheckSurroundings& around, const Form& form, Findings& findings) {
    try {
        around.survey.ReadAutomationClass();
    } catch (const RuntimeError& error) {
        const std::wstring program =
            form.GoldMineExePath.empty() ? std::wstring(L"gmw.exe") : form.GoldMineExePath;
        findings.Tell({LinkState::Broken, Join(L"is not registered: ", error.description),
                       Join(L"As administrator: ", Quoted(program), L" /RegServer")});
        return false;
    }
    findings.Tell({LinkState::Ok, L"registered"});
    return true;
}

// Whether GoldMine answers, and which version it is.
bool LookAtVersion(GoldMineVersion& version, const GMUI& gmui, const Talk& talk,
                   Findings& findings) {
    bool recentEnough = false;
    const bool known = version.CheckGoldMineVersion(recentEnough);
    if (const auto& error = gmui.reportedError()) {
        findings.Tell(
            error->number == ErrorNumber::PermissionDenied
                ? Finding{LinkState::Broken, L"nobody is logged in to GoldMine",
                          L"Log in to GoldMine."}
                : Finding{LinkState::Broken, Join(L"cannot connect: ", OneLine(error->description)),
                          L"Close and restart GoldMine; if that does not help, register it as the "
                          L"installation page says."});
        return false;
    }
    findings.Tell({LinkState::Ok, L"GoldMine answers"});
    if (!known) {
        findings.Tell({LinkState::Broken, OneLine(talk.last()), std::wstring(goldMineHangs)});
        return false;
    }
    if (!recentEnough) {
        findings.Tell({LinkState::Broken, OneLine(talk.last()), L"Use GoldMine 6.7 or later."});
        return false;
    }
    findings.Tell({LinkState::Ok, OneLine(talk.last())});
    return true;
}

void LookAtModem(const GoldMineIniSetup& ini, Findings& findings) {
    constexpr std::wstring_view fix =
        L"Start CorvaneTo3CX.exe without parameters while GoldMine runs, and answer Yes; then "
        L"restart GoldMine.";
    const auto tell = [&](bool fine, std::wstring whenFine, std::wstring otherwise) {
        findings.Tell(fine ? Finding{LinkState::Ok, std::move(whenFine)}
                           : Finding{LinkState::Broken, std::move(otherwise), std::wstring(fix)});
    };
    tell(ini.KnowsModem(), L"there is one", L"GoldMine knows no modem, so it does not dial");
    const std::wstring current = ini.DialingInstruction();
    tell(ini.DialsThroughUs(), current,
         current.empty() ? std::wstring(L"there is no dialing instruction")
                         : Join(current, L" dials through something else"));
    tell(ini.DialsAsEntered(), L"numbers are dialed as entered",
         L"numbers are formatted before they are dialed");
}

void LookAtGoldMine(const CheckSurroundings& around, Findings& findings) {
    Form form;
    form.txtAppPath.setText(around.program.ExecutablePath());
    Talk talk;
    ReadOnlyFiles files(around.files);
    ReadOnlyIniFiles iniFiles(around.iniFiles);
    GoldMineProcess process(form, around.processes, talk, talk);
    GMUI gmui(around.goldMine, around.xpath, form, talk, talk, around.clock);
    gmui.ConnectOnlyWhile([&] { return process.RunningClient().has_value(); });
    Macro macro(gmui);
    GoldMineIniSetup ini(form, macro, files, iniFiles, talk, talk);
    GoldMineVersion version(form, macro, ini, talk, talk);

    const bool running = LookAtProcess(around, process, form, talk, findings);
    const bool registered = LookAtAutomationClass(around, form, findings);
    if (!running || !registered) {
        findings.Skip(L"GoldMine cannot be asked");
        return;
    }
    if (!LookAtVersion(version, gmui, talk, findings)) {
        findings.Skip(L"GoldMine cannot be asked");
        return;
    }
    if (!ini.FindIniFiles()) {
        findings.Tell({LinkState::Broken, OneLine(talk.last()),
                       L"Log in to GoldMine once as this user: it makes the file then."});
        findings.Skip(L"there is no INI file");
        return;
    }
    findings.Tell({LinkState::Ok, form.txtGoldMineUserIniPath.text()});
    LookAtModem(ini, findings);
    if (!files.FileExists(form.txtGoldMineGMIniPath.text())) {
        findings.Tell({LinkState::Warning,
                       Join(form.txtGoldMineGMIniPath.text(),
                            L" is not there, so notes are written as plain text"),
                       L"See whether GoldMine's folder is complete."});
        return;
    }
    findings.Tell({LinkState::Ok, form.NotesAreHTML ? L"HTML" : L"plain text"});
}

}  // namespace

const LinkGroup goldMineLinks{linksToGoldMine, &LookAtGoldMine};

}  // namespace corvane
