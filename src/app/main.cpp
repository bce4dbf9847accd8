// WinMain: makes the real adapters and the window, runs the program on them, and serves the
// window's messages if it is shown.

#include <string>

#include "app/Program.h"
#include "platform/CrashHandler.h"
#include "platform/cRegistry.h"
#include "platform/goldmine/GoldMineAutomation.h"
#include "platform/kit/ComApartment.h"
#include "platform/kit/SystemLibraries.h"
#include "platform/modFile.h"
#include "platform/modIniFile.h"
#include "platform/MshtmlDocument.h"
#include "platform/MsxmlXPathReader.h"
#include "platform/RunningProgram.h"
#include "platform/SystemClock.h"
#include "platform/SystemMessageBoxes.h"
#include "platform/WindowsProcesses.h"
#include "platform/WindowsShell.h"
#include "ui/window/MainWindow.h"
#include "util/ErrorReport.h"
#include "util/Text.h"

#include "Version.h"

namespace {

using namespace corvane;

void Run(HINSTANCE instance, CrashLine& crashLine) {
    ComWhenNeeded com;
    const std::wstring commandLine = RawCommandLine();
    MainWindow window(instance, com);
    SystemMessageBoxes boxes(
        TrimBlanks(commandLine).empty() ? StartedBy::Hand : StartedBy::OtherProgram, &window);
    SystemClock clock(&window);
    GoldMineAutomation goldMine(com);
    const MsxmlXPathReader xpath;
    cRegistry registry;
    modIniFile iniFiles;
    modFile files;
    WindowsProcesses processes;
    WindowsShell shell;
    Program program({.info = RunningProgramInfo(versionMajor, versionMinor, versionRevision),
                     .commandLine = commandLine,
                     .goldMine = goldMine,
                     .xpath = xpath,
                     .registry = registry,
                     .iniFiles = iniFiles,
                     .files = files,
                     .processes = processes,
                     .shell = shell,
                     .clock = clock,
                     .crashLine = crashLine,
                     .boxes = boxes,
                     .newHtmlDocument = &NewHtmlDocument,
                     .view = window});
    if (program.Run() == RunOutcome::WindowShown)
        window.RunMessageLoop();
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int) {
    CrashHandler crashHandler;
    try {
        LoadFromSystemFolderOnly();
        Run(instance, crashHandler);
    } catch (...) {
        // Before there is a status writer: memory or the program's own path could not be had.
        SystemMessageBoxes boxes(StartedBy::OtherProgram);
        ErrorReport::ShowCurrentError(boxes);
    }
    // There is no meaning in exit codes.
    return 0;
}
