// The program itself, and what 3CX knows of it.

#include <array>
#include <string>

#include "check/ReadOnly.h"
#include "check/Survey.h"
#include "check/Talk.h"
#include "check/wiring/Links.h"
#include "environment/ThreeCXIntegration.h"
#include "settings/cSimuIniFile.h"
#include "ui/form/Form.h"
#include "util/RuntimeError.h"
#include "util/Text.h"

namespace corvane {

namespace {

using Generation = ThreeCXIntegration::Generation;

constexpr std::wstring_view serverHangs =
    L"See whether its folder stands on a server that is gone.";
constexpr auto linksToThreeCX = std::to_array<Link>({
    {L"program", serverHangs},
    {L"3CX", serverHangs},
    {L"call notifier", serverHangs},
    {L"call trigger", serverHangs},
    {L"plug-in", serverHangs},
    {L"plug-in log level", serverHangs},
});

Finding LookAtProgram(const CheckSurroundings& around) {
    const std::wstring path = around.program.ExecutablePath();
    const std::wstring& folder = around.program.folder;
    if (!around.files.FileExists(path)) {
        return {LinkState::Broken, Join(path, L" is not there"),
                L"Put CorvaneCheck.exe into the folder of CorvaneTo3CX.exe."};
    }
    if (folder.find(L' ') != std::wstring::npos) {
        return {LinkState::Broken, Join(path, L": GoldMine cannot dial through a path with blanks"),
                L"Move both programs to a folder without blanks in its path, such as "
                L"C:\\CorvaneTo3CX."};
    }
    if (around.survey.MayAddTo(folder) &&
        around.survey.Elevated(around.processes.OwnProcessId()) == false) {
        return {LinkState::Warning,
                Join(path, L": whoever is no administrator may exchange it, too"),
                Join(L"As administrator: icacls ", folder, L" /inheritance:d, then icacls ", folder,
                     L" /remove:g *S-1-5-11")};
    }
    return {LinkState::Ok, path};
}

Finding LookAtGeneration(Generation generation) {
    switch (generation) {
        case Generation::MyPhone10Or11:
            return {LinkState::Ok, L"3CX MyPhone, so 3CX 10 or 11"};
        case Generation::Phone14OrLater:
            return {LinkState::Ok, L"3CXPhone for Windows, so 3CX 14 or later"};
        default:
            return {LinkState::Broken, L"neither 3CXPhone nor 3CX MyPhone is installed",
                    L"Install 3CXPhone for Windows or, for 3CX 11, the 3CX MyPhone Desktop "
                    L"Components."};
    }
}

std::wstring CallNotifierIn(Registry& registry) {
    cSimuIniFile store(registry);
    store.Scope = 2;
    store.Subkey = L"SOFTWARE\\3CX";
    store.RootSpec = L"CRM";
    try {
        return store.ReadProfileString(L"CallNotifierPath", L"");
    } catch (const RuntimeError&) {
        return {};  // as the program has it
    }
}

Finding LookAtCallNotifier(const CheckSurroundings& around, const ThreeCXIntegration& threeCX) {
    const std::wstring own = around.program.ExecutablePath();
    const std::wstring fix = Join(
        L"As administrator: set CallNotifierPath below "
        L"HKEY_LOCAL_MACHINE\\SOFTWARE\\3CX\\CRM of the 32-bit view to ",
        own, L", without quotes.");
    const std::wstring notifier = CallNotifierIn(around.registry);
    const std::wstring other = CallNotifierIn(around.otherRegistry);
    if (notifier.empty() && other.empty())
        return {LinkState::Broken, L"CallNotifierPath is missing: 3CX calls nobody", fix};
    if (notifier.empty()) {
        return {LinkState::Broken,
                Join(L"CallNotifierPath stands in the other registry view only: ", other), fix};
    }
    if (notifier == own && !other.empty() && other != own) {
        return {LinkState::Warning, Join(notifier, L"; the other registry view says ", other),
                L"Remove the value of the other view, or set it to the same."};
    }
    if (notifier == own)
        return {LinkState::Ok, notifier};
    if (threeCX.IsCalledBy(notifier))
        return {LinkState::Warning, Join(notifier, L" only shows what 3CX passes"), fix};
    constexpr std::wstring_view toldAtEveryCall = L"; the program says so in a box at every call";
    const std::wstring unquoted = ReplaceAll(notifier, L"\"", L"");
    if (unquoted == own)
        return {LinkState::Warning, Join(notifier, L" has quotes", toldAtEveryCall), fix};
    if (UpperCase(unquoted) == UpperCase(own)) {
        return {LinkState::Warning, Join(notifier, L" has another letter case", toldAtEveryCall),
                fix};
    }
    return {LinkState::Broken, Join(L"3CX calls another program: ", notifier), fix};
}

Finding LookAtCallTrigger(const CheckSurroundings& around, const Form& form,
                          Generation generation) {
    const std::wstring& path = form.txt3CXOutboundCallNotifierPath.text();
    if (around.files.FileExists(path))
        return {LinkState::Ok, path};
    return {
        LinkState::Broken, Join(path, L" is not there: nothing can be dialed"),
        generation == Generation::Phone14OrLater
            ? L"Install 3CXPhone for Windows again; the Path in its registry key ends in \"\\\"."
            : L"Install the 3CX MyPhone Desktop Components again."};
}

Finding LookAtPlugin(const CheckSurroundings& around, const Form& form) {
    const std::wstring& path = form.txtCommandLineAPIPluginDLLPath.text();
    if (around.files.FileExists(path))
        return {LinkState::Ok, path};
    return {LinkState::Broken, Join(path, L" is not there: 3CX calls nobody"),
            L"Put 3CX's Command Line API plug-in into the folder of 3CXPhone for Windows."};
}

Finding LookAtLogLevel(const Form& form) {
    const std::wstring& level = form.txtCommandLineAPILogLevel.text();
    if (level == L"ImportantEvents")
        return {LinkState::Ok, level};
    return {LinkState::Warning,
            level == L"AllEvents" ? Join(level, L": the plug-in's log grows with every call")
                                  : Join(Quoted(level), L" is no log level"),
            L"Press \"Set to log only ImportantEvents\" on the program's Paths page."};
}

void LookAtThreeCX(const CheckSurroundings& around, Findings& findings) {
    Form form;
    Talk talk;
    ThreeCXIntegration threeCX(form, around.program, around.registry, around.files, around.shell,
                               talk, talk);
    const Generation generation = threeCX.Discover();
    findings.Tell(LookAtProgram(around));
    findings.Tell(LookAtGeneration(generation));
    findings.Tell(LookAtCallNotifier(around, threeCX));
    if (generation == Generation::None) {
        findings.Skip(L"3CX is not installed");
        return;
    }
    findings.Tell(LookAtCallTrigger(around, form, generation));
    if (generation == Generation::MyPhone10Or11) {
        findings.Tell({LinkState::Ok, L"none: it belongs to 3CX 14 and later"});
        findings.Tell({LinkState::Ok, L"none"});
        return;
    }
    findings.Tell(LookAtPlugin(around, form));
    findings.Tell(LookAtLogLevel(form));
}

}  // namespace

const LinkGroup threeCXLinks{linksToThreeCX, &LookAtThreeCX};

}  // namespace corvane
