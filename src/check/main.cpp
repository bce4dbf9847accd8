// The console program that tells how GoldMine, 3CX and CorvaneTo3CX are linked. CorvaneTo3CX takes
// whatever is no switch for a number to dial, so its command line has no room for this.

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "check/calls/CallsCommand.h"
#include "check/CheckSurroundings.h"
#include "check/Commands.h"
#include "check/number/Number.h"
#include "check/platform/ConsoleOutput.h"
#include "check/platform/ReadOnlyRegistry.h"
#include "check/platform/WindowsLogFiles.h"
#include "check/platform/WindowsReportFiles.h"
#include "check/platform/WindowsSurvey.h"
#include "check/ReadOnly.h"
#include "check/report/Report.h"
#include "check/wiring/Wiring.h"
#include "environment/LogPlace.h"
#include "platform/goldmine/GoldMineAutomation.h"
#include "platform/kit/ComApartment.h"
#include "platform/kit/SystemLibraries.h"
#include "platform/modFile.h"
#include "platform/modIniFile.h"
#include "platform/MsxmlXPathReader.h"
#include "platform/RunningProgram.h"
#include "platform/SystemClock.h"
#include "platform/WindowsProcesses.h"
#include "platform/WindowsShell.h"

#include "Version.h"

namespace {

using namespace corvane;

ProgramInfo CheckedProgram() {
    ProgramInfo info = RunningProgramInfo(versionMajor, versionMinor, versionRevision);
    info.executableName = L"CorvaneTo3CX";
    return info;
}

void InRealSurroundings(const std::function<void(const CheckSurroundings&)>& body) {
    ComWhenNeeded com;
    com.Enter();  // commands are read as XML before GoldMine is spoken to
    ReadOnlyRegistry registry(ReadOnlyRegistry::View::Own);
    ReadOnlyRegistry otherRegistry(ReadOnlyRegistry::View::OtherWordLength);
    const modIniFile iniFiles;
    const modFile files;
    WindowsProcesses processes;
    const WindowsShell shell;
    SystemClock clock;
    const WindowsSurvey survey;
    GoldMineAutomation goldMine(com);
    const MsxmlXPathReader xpath;
    body({.program = CheckedProgram(),
          .registry = registry,
          .otherRegistry = otherRegistry,
          .iniFiles = iniFiles,
          .files = files,
          .processes = processes,
          .shell = shell,
          .clock = clock,
          .survey = survey,
          .goldMine = goldMine,
          .xpath = xpath});
}

using Texts = std::span<const std::wstring>;

std::wstring LogPathHere() {
    const modFile files;
    ReadOnlyFiles readOnly(files);
    return LogPath(WindowsShell(), readOnly, CheckedProgram().executableName);
}

int RunCallsHere(Texts arguments, Output& output) {
    WindowsLogFiles logs;
    return RunCalls(arguments, output,
                    {.files = logs,
                     .logPath = LogPathHere(),
                     .now = LogTimeFrom(SystemClock().GetLocalTimeMs())});
}

int RunReportHere(Texts arguments, Output& output) {
    const WindowsLogFiles logs;
    WindowsReportFiles files;
    return RunReport(arguments, output,
                     {.inSurroundings = &InRealSurroundings,
                      .logs = logs,
                      .files = files,
                      .logPath = LogPathHere(),
                      .usualFolder = WindowsShell().FolderPath(SpecialFolder::Desktop),
                      .versionText = CheckedProgram().VersionText(),
                      .now = LogTimeFrom(SystemClock().GetLocalTimeMs())});
}

std::vector<CheckCommand> Commands() {
    return {
        {L"wiring", wiringSummary, wiringHelp,
         [](Texts arguments, Output& output) {
             return RunWiring(arguments, output, &InRealSurroundings);
         }},
        {L"number", numberSummary, numberHelp,
         [](Texts arguments, Output& output) {
             return RunNumber(arguments, output, &InRealSurroundings);
         }},
        {L"calls", callsSummary, callsHelp, &RunCallsHere},
        {L"report", reportSummary, reportHelp, &RunReportHere},
    };
}

}  // namespace

int wmain(int count, wchar_t** texts) {
    LoadFromSystemFolderOnly();
    const std::span<wchar_t*> all(texts, static_cast<std::size_t>(count));
    const std::vector<std::wstring> arguments(all.begin() + (all.empty() ? 0 : 1), all.end());
    ConsoleOutput output;
    const int exitCode = RunCommand(Commands(), arguments, output);
    // All is written. A thread that hangs in GoldMine or in a server's folder is in nobody's way
    // so.
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(exitCode));
    return exitCode;
}
