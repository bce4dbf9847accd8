#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>

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
#include "fakes/FakeClock.h"
#include "fakes/FakeFiles.h"
#include "fakes/FakeFormView.h"
#include "fakes/FakeGoldMine.h"
#include "fakes/FakeHtmlDocument.h"
#include "fakes/FakeMessageBoxes.h"
#include "fakes/FakeProcesses.h"
#include "fakes/FakeRegistry.h"
#include "fakes/TestApartment.h"
#include "fakes/TestXPathReader.h"
#include "gmapi/DataStream.h"
#include "gmapi/GMUI.h"
#include "gmapi/Macro.h"
#include "gmapi/Records.h"
#include "gmapi/WindowCommands.h"
#include "settings/SettingQuestions.h"
#include "settings/Settings.h"
#include "ui/form/EnablingRules.h"
#include "ui/form/FieldChecks.h"
#include "ui/form/Form.h"
#include "util/ErrorReport.h"
#include "util/ProgramInfo.h"

namespace corvane::test {

// What the program meets outside of itself; outlives one run of it.
struct Surroundings {
    // 3CXPhone with its plug-in, and its call notifier pointing at this program.
    void InstallThreeCX() {
        registry.Store(L"HKLM\\SOFTWARE\\3CX\\3CXPhone for Windows", L"Path", L"C:\\3CX\\");
        registry.Store(L"HKLM\\SOFTWARE\\3CX\\CRM", L"CallNotifierPath",
                       L"C:\\Corvane\\CorvaneTo3CX.exe");
        files.files[L"C:\\3CX\\CallTriggerCmd.exe"];
        files.files[L"C:\\3CX\\CommandLineAPIPlugin.dll"];
    }
    // A running GoldMine of that version, user ANN, whose INI files ask for no change.
    void RunGoldMine(const std::wstring& version = L"2014.1") {
        processes.RunGoldMine();
        AnswerMacro(L"Version", version);
        AnswerMacro(L"ProgramDataDir", L"C:\\GM\\");
        AnswerMacro(L"UserName", L"ANN");
        files.files[L"C:\\GM\\ANN.INI"];
        files.files[L"C:\\GM\\GM.INI"];
        auto& userIni = iniFiles.files[L"C:\\GM\\ANN.INI"];
        userIni[{L"Modem", L"DeviceID"}] = L"0";
        userIni[{L"Modem", L"DDEDial"}] = L"&Dial,,C:\\Corvane\\CorvaneTo3CX.exe %s";
        userIni[{L"Modem", L"TAPITranslation"}] = L"0";
        iniFiles.files[L"C:\\GM\\GM.INI"][{L"GoldMine", L"HTML_Cal_Notes"}] = L"0";
    }
    // The macro's name without its ampersand.
    void AnswerMacro(const std::wstring& name, const std::wstring& value) {
        goldMine.answers[L"<GMAPI call=\"Macro\"><data name=\"Macro\">&amp;" + name +
                         L"</data></GMAPI>"] =
            L"<GMAPI call=\"Macro\"><status code=\"1\">" + value + L"</status></GMAPI>";
    }
    // A setting that an earlier run saved.
    void StoreOption(const std::wstring& name, const std::wstring& text) {
        registry.Store(FakeRegistry::ownKey, name, text);
    }

    TestApartment apartment;
    ProgramInfo info{L"C:\\Corvane", L"CorvaneTo3CX", 1, 0, 1};
    FakeRegistry registry;
    FakeIniFiles iniFiles;
    FakeFileSystem files;
    FakeShell shell;
    FakeProcesses processes;
    FakeClock clock;
    FakeMessageBoxes boxes;
    TestXPathReader xpath;
    FakeGoldMine goldMine;
    HtmlScript html;
};

// The whole program over fakes, wired like the real one; nothing runs before it is asked to.
// The arguments are what stands behind the path in the command line.
struct TestProgram {
    TestProgram(Surroundings& surroundings, std::wstring behindThePath)
        : around(surroundings), arguments(std::move(behindThePath)) {
        form.setChangeHandler([this](Control& changed) { rules.Run(changed); });
        settings.setAfterSave([this] { status.SaveWriteLog(); });
        around.goldMine.setWindowUpDownHandler(
            [this](const std::wstring& windowName, bool up, std::int32_t windowHandle) {
                errors.Guard([&] { windows.moGMUI_WindowUpDown(windowName, up, windowHandle); });
            });
        windows.setCallDialogHandler(
            [this](std::int32_t windowHandle) { dispatcher.FillInCallDialog(windowHandle); });
        view.Attach(form, actions);
        dispatcher.setAfterCall([this] { actions.CallProcessed(); });
    }
    ~TestProgram() { around.goldMine.setWindowUpDownHandler(nullptr); }
    TestProgram(const TestProgram&) = delete;
    TestProgram& operator=(const TestProgram&) = delete;

    // Start-up, and the unload at once unless a window waits for the user.
    RunOutcome Run() {
        RunOutcome outcome = RunOutcome::End;
        errors.Guard([&] { outcome = startUp.Run(); });
        if (outcome == RunOutcome::End)
            errors.Guard([this] { static_cast<void>(shutdown.Unload()); });
        return outcome;
    }

    Surroundings& around;
    std::wstring arguments;
    FakeFormView view;

    Form form{&view};
    EnablingRules rules{form};
    Status status{form, around.info, around.registry, around.files, around.shell, around.clock};
    ErrorReport errors{status, around.boxes};
    Settings settings{form, around.registry, status, around.boxes};
    SettingQuestions questions{form, settings, around.boxes};
    FieldChecks fieldChecks{form, around.boxes};

    GMUI gmui{around.goldMine, around.xpath, form, status, around.boxes, around.clock};
    Macro macro{gmui};
    DataStream dataStream{gmui, form, status, around.boxes};
    Records records{gmui};
    WindowCommands windows{gmui, status};

    Dialer dialer{form, around.processes, status, around.boxes};
    ContactSearch search{form, macro, dataStream, windows, status, around.boxes};
    CallHistory history{form, gmui, macro, records, windows, status, around.boxes};
    RecordingLink recordingLink{form, around.files, status, around.boxes, around.clock};
    HtmlNotes notes{form,
                    windows,
                    status,
                    around.clock,
                    [this] { return std::make_unique<FakeHtmlDocument>(around.html); },
                    around.info.executableName};
    Dispatcher dispatcher{form,          dialer, search, history,
                          recordingLink, notes,  status, around.clock};

    GoldMineProcess goldMineProcess{form, around.processes, status, around.boxes};
    GoldMineIniSetup iniSetup{form, macro, around.files, around.iniFiles, around.boxes};
    GoldMineVersion goldMineVersion{form, macro, iniSetup, rules, status, around.boxes};
    ThreeCXIntegration threeCX{form,         around.info,  around.registry,
                               around.files, around.shell, around.boxes};
    FileOpener fileOpener{form, around.files, around.shell, around.boxes};

    CallParameters parameters{form, status, around.info.VersionText(), arguments};
    Shutdown shutdown{{form, settings, windows, gmui, goldMineProcess, status, around.boxes,
                       around.clock, errors}};
    StartUp startUp{{form, around.info, status, settings, rules, threeCX, parameters,
                     goldMineProcess, goldMineVersion, dispatcher, around.boxes, errors}};
    UserActions actions{{form, settings, questions, fieldChecks, rules, parameters, dispatcher,
                         recordingLink, goldMineProcess, gmui, threeCX, fileOpener, shutdown,
                         around.boxes, errors}};
};

// Base of the tests of whole runs: set up `around`, make a program, run it.
class ProgramTest : public testing::Test {
protected:
    // The program with these arguments; it has not run yet. An earlier one is gone.
    TestProgram& Make(const std::wstring& arguments = L"") {
        program_.reset();
        program_.emplace(around, arguments);
        return *program_;
    }
    [[nodiscard]] TestProgram& program() { return *program_; }

    Surroundings around;

private:
    std::optional<TestProgram> program_;
};

}  // namespace corvane::test
