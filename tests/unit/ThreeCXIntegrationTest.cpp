#include "environment/ThreeCXIntegration.h"

#include <gtest/gtest.h>

#include "fakes/FakeFiles.h"
#include "fakes/FakeMessageBoxes.h"
#include "fakes/FakeRegistry.h"
#include "fakes/FakeStatusWriter.h"
#include "ui/form/Form.h"
#include "util/ProgramInfo.h"

namespace corvane::test {
namespace {

const std::wstring goldMineKey = L"HKLM\\SOFTWARE\\FrontRange Solutions\\GoldMine";
const std::wstring myPhoneKey = L"HKLM\\SOFTWARE\\3CX\\MyPhone";
const std::wstring phoneKey = L"HKLM\\SOFTWARE\\3CX\\3CXPhone for Windows";
const std::wstring crmKey = L"HKLM\\SOFTWARE\\3CX\\CRM";
const std::wstring ownPath = L"C:\\Corvane\\CorvaneTo3CX.exe";

const std::wstring logLevelNotice =
    L"Please exit and re-start 3CXPhone to complete changing the 3CX Command Line API Plugin log "
    L"level.";

// 3CX 14 with its plug-in, pointing at this program.
class ThreeCXIntegrationTest : public testing::Test {
protected:
    ThreeCXIntegrationTest() {
        registry.Store(phoneKey, L"Path", L"C:\\3CX\\");
        registry.Store(crmKey, L"CallNotifierPath", ownPath);
        files.files[L"C:\\3CX\\CallTriggerCmd.exe"];
        files.files[L"C:\\3CX\\CommandLineAPIPlugin.dll"];
    }
    void UseMyPhone(const std::wstring& notifier) {
        registry.Store(myPhoneKey, L"CallNotifier", notifier);
        files.files[notifier];
    }
    static void ExpectFilled(const TextBox& box, const std::wstring& text) {
        EXPECT_EQ(box.text(), text);
        EXPECT_EQ(box.tooltip(), text);
    }
    // The boxes of 3CX 14's plug-in are empty, and their labels say whose they are.
    void ExpectNoPlugin() {
        EXPECT_FALSE(form.cmdChangeLogLevel.enabled());
        EXPECT_FALSE(form.cmdOpenPluginLog.enabled());
        ExpectFilled(form.txtCommandLineAPIPluginDLLPath, L"");
        ExpectFilled(form.txtCommandLineAPILogLevel, L"");
        ExpectFilled(form.txtCommandLineAPILogPath, L"");
        EXPECT_EQ(form.lblParam(30).caption(),
                  L"3CX uses this plugin to call CorvaneTo3CX.exe:\r\n"
                  L"(the plugin belongs to 3CX 14 and later)");
        EXPECT_EQ(form.lblParam(32).caption(),
                  L"3CX Command Line API Plugin log level:\r\n"
                  L"(the plugin belongs to 3CX 14 and later)");
        EXPECT_EQ(form.lblParam(33).caption(),
                  L"Path to 3CX Command Line API Plugin log file:\r\n"
                  L"(the plugin belongs to 3CX 14 and later)");
    }
    void ExpectWarned(const std::wstring& text) {
        threeCX.Discover();
        EXPECT_EQ(boxes.Take(), ShownBoxes{Notice(text)});
    }

    FakeRegistry registry;
    FakeFileSystem files;
    FakeShell shell;
    FakeStatusWriter status;
    FakeMessageBoxes boxes;
    Form form;
    ProgramInfo program{L"C:\\Corvane", L"CorvaneTo3CX", 1, 0, 1};
    ThreeCXIntegration threeCX{form, program, registry, files, shell, status, boxes};
};

TEST_F(ThreeCXIntegrationTest, ACompleteInstallationIsShownWithoutAWarning) {
    registry.Store(goldMineKey, L"InstallDir", L"C:\\GoldMine");

    threeCX.Discover();

    EXPECT_EQ(boxes.Take(), ShownBoxes{});
    ExpectFilled(form.txtAppPath, ownPath);
    ExpectFilled(form.txtGMInstallDir, L"C:\\GoldMine");
    EXPECT_EQ(form.lbl3CXInfo.caption(),
              L"3CXPhone defined in registry. Assuming 3CX 14 or later.");
    ExpectFilled(form.txt3CXOutboundCallNotifierPath, L"C:\\3CX\\CallTriggerCmd.exe");
    ExpectFilled(form.txtCommandLineAPIPluginDLLPath, L"C:\\3CX\\CommandLineAPIPlugin.dll");
    ExpectFilled(form.txtCommandLineAPILogLevel, L"ImportantEvents");
    EXPECT_TRUE(form.cmdChangeLogLevel.enabled());
    EXPECT_TRUE(form.cmdOpenPluginLog.enabled());
    ExpectFilled(form.txtCommandLineAPILogPath,
                 L"C:\\Users\\ann\\AppData\\Roaming\\3CXCommandLineAPIPlugin\\Logs\\"
                 L"3CXCommandLineAPIPlugin.log");
    ExpectFilled(form.txt3CXCRMCallNotifierPath, ownPath);
    EXPECT_EQ(form.lblParam(19).caption(),
              L"CorvaneTo3CX calls this program to dial out via 3CX:\r\n"
              L"HKLM\\Software\\3CX\\3CXPhone for Windows\\Path + CallTriggerCmd.exe");
    EXPECT_EQ(form.lblParam(30).caption(),
              L"3CX uses this plugin to call CorvaneTo3CX.exe:\r\n"
              L"HKLM\\Software\\3CX\\3CXPhone for Windows\\Path + CommandLineAPIPlugin.dll");
    EXPECT_EQ(form.lblParam(17).caption(),
              L"3CX calls this program to handle inbound and outbound call events:\r\n"
              L"HKLM\\Software\\3CX\\CRM\\CallNotifierPath");
    EXPECT_EQ(form.lblParam(32).caption(),
              L"3CX Command Line API Plugin log level:\r\n"
              L"HKLM\\Software\\3CX\\CRM\\CommandLineAPILogLevel");
    EXPECT_EQ(form.lblParam(33).caption(),
              L"Path to 3CX Command Line API Plugin log file:\r\n"
              L"HKLM\\Software\\3CX\\CRM\\CommandLineAPILogPath");
}

TEST_F(ThreeCXIntegrationTest, AGoldMineThatIsNotInstalledIsUnknown) {
    threeCX.Discover();
    ExpectFilled(form.txtGMInstallDir, L"Unknown - probably not running or not installed locally");
}

TEST_F(ThreeCXIntegrationTest, MyPhoneWinsOver3CXPhone) {
    UseMyPhone(L"C:\\MyPhone\\Notifier.exe");
    threeCX.Discover();
    EXPECT_EQ(form.lbl3CXInfo.caption(),
              L"3CX MyPhone defined in registry. Assuming 3CX 10 or 11.");
    ExpectFilled(form.txt3CXOutboundCallNotifierPath, L"C:\\MyPhone\\Notifier.exe");
    EXPECT_EQ(form.lblParam(19).caption(),
              L"CorvaneTo3CX calls this program to dial out via 3CX:\r\n"
              L"HKLM\\Software\\3CX\\MyPhone\\CallNotifier");
}

TEST_F(ThreeCXIntegrationTest, MyPhoneHasNoPlugin) {
    registry.Store(crmKey, L"CommandLineAPILogLevel", L"AllEvents");
    registry.Store(crmKey, L"CommandLineAPILogPath", L"D:\\Logs");
    threeCX.Discover();
    UseMyPhone(L"C:\\MyPhone\\Notifier.exe");

    threeCX.Discover();

    ExpectNoPlugin();
    EXPECT_EQ(boxes.Take(), ShownBoxes{});
}

TEST_F(ThreeCXIntegrationTest, AProgramFolderWithABlankIsWarnedAboutAndDiscoveryGoesOn) {
    program.folder = L"C:\\Program Files\\Corvane";
    registry.Store(crmKey, L"CallNotifierPath", L"C:\\Program Files\\Corvane\\CorvaneTo3CX.exe");
    ExpectWarned(
        L"The path to this program:\r\n\r\nC:\\Program Files\\Corvane\r\n\r\ncontains one or more "
        L"spaces, which GoldMine does not support. Please move 'CorvaneTo3CX.exe' to a folder "
        L"without spaces in the path.");
    ExpectFilled(form.txt3CXOutboundCallNotifierPath, L"C:\\3CX\\CallTriggerCmd.exe");
}

TEST_F(ThreeCXIntegrationTest, Without3CXTheNotifiersAreNotChecked) {
    registry.keys.clear();
    ExpectWarned(
        L"Please install either 3CXPhone or, for 3CX 11, the 3CX MyPhone Desktop Components before "
        L"running Corvane to 3CX.");
    ExpectNoPlugin();
    ExpectFilled(form.txt3CXCRMCallNotifierPath, L"");
    ExpectFilled(form.txt3CXOutboundCallNotifierPath, L"");
    EXPECT_EQ(form.lbl3CXInfo.caption(), L"");
}

TEST_F(ThreeCXIntegrationTest, AnEmptyNotifierOfMyPhoneIsNone) {
    registry.Store(myPhoneKey, L"CallNotifier", L"");
    threeCX.Discover();
    EXPECT_EQ(form.lbl3CXInfo.caption(),
              L"3CXPhone defined in registry. Assuming 3CX 14 or later.");
}

TEST_F(ThreeCXIntegrationTest, WarningsComeInTheOrderInWhichThingsAreLookedFor) {
    program.folder = L"C:\\Program Files\\Corvane";
    files.files.clear();
    registry.keys[crmKey].clear();

    threeCX.Discover();

    EXPECT_EQ(
        boxes.Take(),
        (ShownBoxes{
            Notice(
                L"The path to this program:\r\n\r\nC:\\Program Files\\Corvane\r\n\r\ncontains one "
                L"or more spaces, which GoldMine does not support. Please move "
                L"'CorvaneTo3CX.exe' to a folder without spaces in the path."),
            Notice(L"The 3CX Command Line API Plugin (C:\\3CX\\CommandLineAPIPlugin.dll) could not "
                   L"be found. Please re-install Corvane to 3CX."),
            Notice(L"The 3CX CRM Call Notifier is missing or empty. Please re-install Corvane to "
                   L"3CX."),
            Notice(L"The 3CXPhone Outbound Call Notifier program (C:\\3CX\\CallTriggerCmd.exe) "
                   L"could not be found. Please re-install 3CXPhone for Windows.")}));
}

TEST_F(ThreeCXIntegrationTest, AMissingPluginIsWarnedAbout) {
    files.files.erase(L"C:\\3CX\\CommandLineAPIPlugin.dll");
    ExpectWarned(
        L"The 3CX Command Line API Plugin (C:\\3CX\\CommandLineAPIPlugin.dll) could not be found. "
        L"Please re-install Corvane to 3CX.");
}

TEST_F(ThreeCXIntegrationTest, AMissingCallTriggerIsWarnedAbout) {
    files.files.erase(L"C:\\3CX\\CallTriggerCmd.exe");
    ExpectWarned(
        L"The 3CXPhone Outbound Call Notifier program (C:\\3CX\\CallTriggerCmd.exe) could not be "
        L"found. Please re-install 3CXPhone for Windows.");
}

TEST_F(ThreeCXIntegrationTest, AMissingMyPhoneNotifierIsWarnedAbout) {
    UseMyPhone(L"C:\\MyPhone\\Notifier.exe");
    files.files.erase(L"C:\\MyPhone\\Notifier.exe");
    ExpectWarned(
        L"The 3CX MyPhone Outbound Call Notifier program (C:\\MyPhone\\Notifier.exe) could not be "
        L"found. Please re-install the 3CX MyPhone Desktop Components.");
}

TEST_F(ThreeCXIntegrationTest, APathWithoutItsBackslashIsJoinedAsItIs) {
    registry.Store(phoneKey, L"Path", L"C:\\3CX");
    threeCX.Discover();
    EXPECT_EQ(form.txt3CXOutboundCallNotifierPath.text(), L"C:\\3CXCallTriggerCmd.exe");
    EXPECT_EQ(
        boxes.Take(),
        (ShownBoxes{Notice(L"The 3CX Command Line API Plugin (C:\\3CXCommandLineAPIPlugin.dll) "
                           L"could not be found. Please re-install Corvane to 3CX."),
                    Notice(L"The 3CXPhone Outbound Call Notifier program "
                           L"(C:\\3CXCallTriggerCmd.exe) could not be found. Please "
                           L"re-install 3CXPhone for Windows.")}));
}

TEST_F(ThreeCXIntegrationTest, AMissingCrmCallNotifierIsWarnedAbout) {
    registry.keys[crmKey].clear();
    ExpectWarned(
        L"The 3CX CRM Call Notifier is missing or empty. Please re-install Corvane to 3CX.");
}

class OtherNotifierTest : public ThreeCXIntegrationTest,
                          public testing::WithParamInterface<std::wstring> {};

TEST_P(OtherNotifierTest, ANotifierThatPointsElsewhereIsWarnedAbout) {
    registry.Store(crmKey, L"CallNotifierPath", GetParam());
    ExpectWarned(L"The 3CX CRM Call Notifier is pointing to:\r\n  \"" + GetParam() +
                 L"\"\r\ninstead of to the current instance of Corvane to 3CX:\r\n  "
                 L"\"C:\\Corvane\\CorvaneTo3CX.exe\"\r\nPlease re-install Corvane to 3CX.");
    ExpectFilled(form.txt3CXCRMCallNotifierPath, GetParam());
}

INSTANTIATE_TEST_SUITE_P(Paths, OtherNotifierTest,
                         testing::Values(L"D:\\Corvane\\CorvaneTo3CX.exe",
                                         L"c:\\corvane\\corvaneto3cx.exe",
                                         L"C:\\Corvane\\echoparams.cmd", L"D:\\EchoParams.cmd"));

TEST_F(ThreeCXIntegrationTest, TheSupportStaffsEchoIsNoWrongNotifier) {
    registry.Store(crmKey, L"CallNotifierPath", L"C:\\Corvane\\EchoParams.cmd");
    threeCX.Discover();
    EXPECT_EQ(boxes.Take(), ShownBoxes{});
    ExpectFilled(form.txt3CXCRMCallNotifierPath, L"C:\\Corvane\\EchoParams.cmd");
}

TEST_F(ThreeCXIntegrationTest, KeysThatMayNotBeCreatedReadAsTheirDefaults) {
    registry.failingKeys = {goldMineKey, myPhoneKey};
    threeCX.Discover();
    EXPECT_EQ(boxes.Take(), ShownBoxes{});
    EXPECT_EQ(form.txt3CXOutboundCallNotifierPath.text(), L"C:\\3CX\\CallTriggerCmd.exe");
}

TEST_F(ThreeCXIntegrationTest, AKeyOfTheCrmThatCannotBeReadHasNoNotifierAndTheDefaultLog) {
    registry.Store(crmKey, L"CommandLineAPILogLevel", L"AllEvents");
    registry.Store(crmKey, L"CommandLineAPILogPath", L"D:\\Logs");
    registry.failingKeys = {crmKey};
    ExpectWarned(
        L"The 3CX CRM Call Notifier is missing or empty. Please re-install Corvane to 3CX.");
    ExpectFilled(form.txtCommandLineAPILogLevel, L"ImportantEvents");
    ExpectFilled(form.txtCommandLineAPILogPath,
                 L"C:\\Users\\ann\\AppData\\Roaming\\3CXCommandLineAPIPlugin\\Logs\\"
                 L"3CXCommandLineAPIPlugin.log");
    EXPECT_EQ(form.cmdChangeLogLevel.caption(), L"Set to log AllEvents");
}

struct LogFolder {
    std::wstring stored;
    std::wstring shown;
};

class LogFolderTest : public ThreeCXIntegrationTest,
                      public testing::WithParamInterface<LogFolder> {};

TEST_P(LogFolderTest, IsShownWithTheLogsName) {
    registry.Store(crmKey, L"CommandLineAPILogPath", GetParam().stored);
    threeCX.Discover();
    EXPECT_EQ(form.txtCommandLineAPILogPath.text(), GetParam().shown);
}

const std::wstring defaultLog =
    L"C:\\Users\\ann\\AppData\\Roaming\\3CXCommandLineAPIPlugin\\Logs\\3CXCommandLineAPIPlugin.log";

INSTANTIATE_TEST_SUITE_P(
    Folders, LogFolderTest,
    testing::Values(LogFolder{L"D:\\Logs", L"D:\\Logs\\3CXCommandLineAPIPlugin.log"},
                    LogFolder{L"D:\\Logs\\", L"D:\\Logs\\3CXCommandLineAPIPlugin.log"},
                    LogFolder{L"  D:\\Logs  ", L"D:\\Logs\\3CXCommandLineAPIPlugin.log"},
                    LogFolder{L"", defaultLog}, LogFolder{L"   ", defaultLog}));

struct LogLevel {
    std::wstring stored;
    std::wstring shown;
    std::wstring caption;
};

class LogLevelTest : public ThreeCXIntegrationTest, public testing::WithParamInterface<LogLevel> {};

TEST_P(LogLevelTest, TheButtonOffersTheOtherLevel) {
    registry.Store(crmKey, L"CommandLineAPILogLevel", GetParam().stored);
    threeCX.Discover();
    ExpectFilled(form.txtCommandLineAPILogLevel, GetParam().shown);
    EXPECT_EQ(form.cmdChangeLogLevel.caption(), GetParam().caption);
}

INSTANTIATE_TEST_SUITE_P(
    Levels, LogLevelTest,
    testing::Values(LogLevel{L"ImportantEvents", L"ImportantEvents", L"Set to log AllEvents"},
                    LogLevel{L" ImportantEvents ", L"ImportantEvents", L"Set to log AllEvents"},
                    LogLevel{L"AllEvents", L"AllEvents", L"Set to log only ImportantEvents"},
                    LogLevel{L"importantevents", L"importantevents",
                             L"Set to log only ImportantEvents"}));

struct LevelChange {
    std::wstring from;
    std::wstring to;
    std::wstring caption;
};

class ChangeLogLevelTest : public ThreeCXIntegrationTest,
                           public testing::WithParamInterface<LevelChange> {};

TEST_P(ChangeLogLevelTest, WritesReadsBackAndAsksForARestart) {
    form.txtCommandLineAPILogLevel.setText(GetParam().from);
    threeCX.ChangeLogLevel();
    EXPECT_EQ(registry.Stored(crmKey, L"CommandLineAPILogLevel"), GetParam().to);
    EXPECT_EQ(form.txtCommandLineAPILogLevel.text(), GetParam().to);
    EXPECT_EQ(form.cmdChangeLogLevel.caption(), GetParam().caption);
    EXPECT_EQ(form.focused(), &form.txtCommandLineAPILogLevel);
    EXPECT_EQ(boxes.Take(), ShownBoxes{Notice(logLevelNotice)});
}

INSTANTIATE_TEST_SUITE_P(
    Levels, ChangeLogLevelTest,
    testing::Values(
        LevelChange{L"ImportantEvents", L"AllEvents", L"Set to log only ImportantEvents"},
        LevelChange{L" ImportantEvents ", L"AllEvents", L"Set to log only ImportantEvents"},
        LevelChange{L"AllEvents", L"ImportantEvents", L"Set to log AllEvents"},
        LevelChange{L"", L"ImportantEvents", L"Set to log AllEvents"},
        LevelChange{L"importantevents", L"ImportantEvents", L"Set to log AllEvents"}));

TEST_F(ThreeCXIntegrationTest, ALevelThatMayNotBeWrittenShowsWhatIsStored) {
    registry.Store(crmKey, L"CommandLineAPILogLevel", L"ImportantEvents");
    registry.readOnlyKeys = {crmKey};
    form.txtCommandLineAPILogLevel.setText(L"ImportantEvents");
    threeCX.ChangeLogLevel();
    EXPECT_EQ(form.txtCommandLineAPILogLevel.text(), L"ImportantEvents");
    // The caption goes by what was asked for.
    EXPECT_EQ(form.cmdChangeLogLevel.caption(), L"Set to log only ImportantEvents");
    EXPECT_EQ(boxes.Take(), ShownBoxes{Notice(logLevelNotice)});
    ASSERT_EQ(status.lines.size(), 1U);
    EXPECT_TRUE(status.lines[0].starts_with(
        L"Could not change 3CX Command Line API Plugin log level: RegCreateKeyEx"))
        << status.lines[0];
    EXPECT_EQ(status.lines[0].find_first_of(L"\r\n"), std::wstring::npos);
}

TEST_F(ThreeCXIntegrationTest, ALevelThatWasNeverStoredAndMayNotBeWrittenIsEmpty) {
    registry.readOnlyKeys = {crmKey};
    form.txtCommandLineAPILogLevel.setText(L"ImportantEvents");
    threeCX.ChangeLogLevel();
    EXPECT_EQ(form.txtCommandLineAPILogLevel.text(), L"");
    EXPECT_EQ(boxes.Take(), ShownBoxes{Notice(logLevelNotice)});
}

}  // namespace
}  // namespace corvane::test
