// WinMain: builds the program out of its parts, runs start-up, the window's messages if there is
// a window, and shutdown.

#include <exception>
#include <new>
#include "app/CallParameters.h"
#include "app/Shutdown.h"
#include "app/StartUp.h"
#include "app/Status.h"
#include "app/UserActions.h"
#include "calls/CallHistory.h"
#include "calls/ContactSearch.h"
#include "calls/Dispatcher.h"
#include "calls/HtmlNotes.h"
#include "calls/RecordingLink.h"
#include "dialing/Dialer.h"
#include "dialing/GoldMineIniSetup.h"
#include "environment/FileOpener.h"
#include "environment/GoldMineProcess.h"
#include "environment/GoldMineVersion.h"
#include "environment/ThreeCXIntegration.h"
#include "gmapi/DataStream.h"
#include "gmapi/GMUI.h"
#include "gmapi/Macro.h"
#include "gmapi/Records.h"
#include "gmapi/WindowCommands.h"
#include "platform/cRegistry.h"
#include "platform/goldmine/GoldMineAutomation.h"
#include "platform/kit/ComApartment.h"
#include "platform/modFile.h"
#include "platform/modIniFile.h"
#include "platform/MshtmlDocument.h"
#include "platform/MsxmlXPathReader.h"
#include "platform/RunningProgram.h"
#include "platform/SystemClock.h"
#include "platform/SystemMessageBoxes.h"
#include "platform/WindowsProcesses.h"
#include "platform/WindowsShell.h"
#include "settings/SettingQuestions.h"
#include "settings/Settings.h"
#include "ui/form/EnablingRules.h"
#include "ui/form/FieldChecks.h"
#include "ui/form/Form.h"
#include "ui/window/MainWindow.h"
#include "util/ErrorReport.h"

#include "Version.h"

namespace corvane {
namespace {

// Members are built from top to bottom and end from bottom to top.
struct Program {
    explicit Program(HINSTANCE instanceHandle) : instance(instanceHandle) {
        form.setChangeHandler([this](Control& changed) { rules.Run(changed); });
        settings.setAfterSave([this] { status.SaveWriteLog(); });
        goldMine.setWindowUpDownHandler(
            [this](const std::wstring& windowName, bool up, std::int32_t windowHandle) {
                errors.Guard([&] { windows.moGMUI_WindowUpDown(windowName, up, windowHandle); });
            });
        windows.setCallDialogHandler(
            [this](std::int32_t windowHandle) { dispatcher.FillInCallDialog(windowHandle); });
        window.Attach(form, actions);
        dispatcher.setAfterCall([this] { actions.CallProcessed(); });
    }
    ~Program() {
        // GoldMine's last event must find nobody rather than what is being taken down.
        goldMine.setWindowUpDownHandler(nullptr);
        goldMine.Release();
        window.Detach();
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    void Run() {
        RunOutcome outcome = RunOutcome::End;
        errors.Guard([&] { outcome = startUp.Run(); });
        if (outcome == RunOutcome::WindowShown) {
            window.RunMessageLoop();
        } else {
            // Nothing was shown, so nothing is asked and nothing can be cancelled.
            errors.Guard([this] { static_cast<void>(shutdown.Unload()); });
        }
    }

    HINSTANCE instance;
    ProgramInfo info = RunningProgramInfo(versionMajor, versionMinor, versionRevision);
    ComApartment apartment;

    MainWindow window{instance};
    cRegistry registry;
    modIniFile iniFiles;
    modFile files;
    WindowsShell shell;
    WindowsProcesses processes;
    SystemClock clock{&window};
    SystemMessageBoxes boxes{&window};
    MsxmlXPathReader xpath;
    GoldMineAutomation goldMine;

    Form form{&window};
    EnablingRules rules{form};
    Status status{form, info, registry, files, shell, clock};
    ErrorReport errors{status, boxes};
    Settings settings{form, registry, status, boxes};
    SettingQuestions questions{form, settings, boxes};
    FieldChecks fieldChecks{form, boxes};

    GMUI gmui{goldMine, xpath, form, status, boxes, clock};
    Macro macro{gmui};
    DataStream dataStream{gmui, form, status, boxes};
    Records records{gmui};
    WindowCommands windows{gmui, status};

    Dialer dialer{form, processes, status, boxes};
    ContactSearch search{form, macro, dataStream, windows, status, boxes};
    CallHistory history{form, gmui, macro, records, windows, status, boxes};
    RecordingLink recordingLink{form, files, status, boxes, clock};
    HtmlNotes notes{form, windows, status, clock, &NewHtmlDocument, info.executableName};
    Dispatcher dispatcher{form, dialer, search, history, recordingLink, notes, status, clock};

    GoldMineProcess goldMineProcess{form, processes, status, boxes};
    GoldMineIniSetup iniSetup{form, macro, files, iniFiles, boxes};
    GoldMineVersion goldMineVersion{form, macro, iniSetup, rules, status, boxes};
    ThreeCXIntegration threeCX{form, info, registry, files, shell, boxes};
    FileOpener fileOpener{form, files, shell, boxes};

    CallParameters parameters{form, status, info.VersionText(), RawCommandLine()};
    Shutdown shutdown{
        {form, settings, windows, gmui, goldMineProcess, status, boxes, clock, errors}};
    StartUp startUp{{form, info, status, settings, rules, threeCX, parameters, goldMineProcess,
                     goldMineVersion, dispatcher, boxes, errors}};
    UserActions actions{{form, settings, questions, fieldChecks, rules, parameters, dispatcher,
                         recordingLink, goldMineProcess, gmui, threeCX, fileOpener, shutdown, boxes,
                         errors}};
};

}  // namespace
}  // namespace corvane

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int) {
    // Before there is a status writer: COM, memory or the program's own path could not be had.
    const auto tell = [](const corvane::RuntimeError& error) {
        corvane::SystemMessageBoxes().Notify(corvane::RuntimeErrorText(error),
                                             corvane::BoxIcon::Critical);
    };
    try {
        corvane::Program(instance).Run();
    } catch (const corvane::RuntimeError& error) {
        tell(error);
    } catch (const std::bad_alloc&) {
        tell(corvane::MakeRuntimeError(corvane::ErrorNumber::OutOfMemory));
    } catch (const std::exception&) {
        tell(corvane::MakeRuntimeError(corvane::ErrorNumber::InvalidProcedureCall));
    }
    // There is no meaning in exit codes.
    return 0;
}
