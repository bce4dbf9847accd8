#pragma once

#include "app/CallParameters.h"
#include "app/Shutdown.h"
#include "app/StartUp.h"
#include "app/Status.h"
#include "app/Surroundings.h"
#include "app/UserActions.h"
#include "calls/CallHistory.h"
#include "calls/CallInProgress.h"
#include "calls/CompleteCallDialog.h"
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
#include "settings/SettingQuestions.h"
#include "settings/Settings.h"
#include "ui/form/FieldChecks.h"
#include "ui/form/Form.h"
#include "util/ErrorReport.h"

namespace corvane {

// The whole program, wired once: on real adapters for users, on fakes for tests. Nothing runs
// before it is asked to. Members are built from top to bottom and end from bottom to top.
struct Program {
    explicit Program(Surroundings surroundings);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    // Start-up, and the unload at once unless a window waits for the user. Errors are shown, none
    // leaves.
    [[nodiscard]] RunOutcome Run();

    Surroundings around;

    Form form{&around.view};
    Status status{form,         around.info,  around.registry, around.files,
                  around.shell, around.clock, around.crashLine};
    ErrorReport errors{status, around.boxes};
    Settings settings{form, around.registry, status, around.boxes};
    SettingQuestions questions{form, settings, around.boxes};
    FieldChecks fieldChecks{form, around.boxes};

    GMUI gmui{around.goldMine, around.xpath, form, status, around.boxes, around.clock};
    Macro macro{gmui};
    DataStream dataStream{gmui, form, status, around.boxes};
    Records records{gmui};
    WindowCommands windows{gmui};

    Dialer dialer{form, around.processes, status, around.boxes};
    CallInProgress call{form};
    ContactSearch search{form, macro, dataStream, windows, status, around.boxes};
    CallHistory history{form, gmui, macro, records, status, around.boxes};
    RecordingLink recordingLink{form, around.files, status, around.boxes, around.clock};
    HtmlNotes notes{status, around.clock, around.newHtmlDocument, around.info.executableName};
    CompleteCallDialog dialog{{form, gmui, windows, notes, call, status, errors, around.clock}};
    Dispatcher dispatcher{
        {form, dialer, search, history, dialog, recordingLink, call, status, around.clock}};

    GoldMineProcess goldMineProcess{form, around.processes, status, around.boxes};
    GoldMineIniSetup iniSetup{form, macro, around.files, around.iniFiles, status, around.boxes};
    GoldMineVersion goldMineVersion{form, macro, iniSetup, status, around.boxes};
    ThreeCXIntegration threeCX{form,         around.info, around.registry, around.files,
                               around.shell, status,      around.boxes};
    FileOpener fileOpener{form, around.files, around.shell, around.boxes};

    CallParameters parameters{form, status, around.info.VersionText(), around.commandLine};
    Shutdown shutdown{
        {form, settings, dialog, gmui, goldMineProcess, status, around.boxes, errors}};
    StartUp startUp{{form, around.info, status, settings, threeCX, parameters, goldMineProcess,
                     goldMineVersion, dispatcher, around.boxes, errors}};
    UserActions actions{{form, settings, questions, fieldChecks, parameters, dispatcher, call,
                         recordingLink, goldMineProcess, goldMineVersion, gmui, threeCX, fileOpener,
                         shutdown, around.boxes, errors}};
};

}  // namespace corvane
