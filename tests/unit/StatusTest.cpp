#include "app/Status.h"

#include <gtest/gtest.h>

#include <vector>

#include "ProgramFixture.h"
#include "TestErrors.h"

namespace corvane::test {
namespace {

const std::wstring logPath = L"C:\\ProgramData\\Halvorn Systems\\CorvaneTo3CX\\CorvaneTo3CX.log";

class StatusTest : public ProgramTest {
protected:
    [[nodiscard]] std::optional<std::wstring> Stored(const std::wstring& name) const {
        return around.registry.Stored(FakeRegistry::ownKey, name);
    }
    // The log as an earlier run of the same version leaves it: run number 17, log on.
    void HaveRunBefore(const std::wstring& runNumber = L"17", const std::wstring& log = L"1") {
        around.StoreOption(L"LastVersionRun", L"1.0.0.1");
        around.StoreOption(L"PreviousStatus", runNumber);
        around.StoreOption(L"chkWriteLog", log);
    }
    // SetUpLog, with the separator line taken away again.
    Status& SetUpLog() {
        Status& status = Make().status;
        status.SetUpLog();
        separator = Log();
        around.files.files[logPath].clear();
        return status;
    }
    [[nodiscard]] std::wstring Log() { return around.files.files[logPath]; }

    std::wstring separator;
};

TEST_F(StatusTest, TheFirstMessageIsTheTextAndOthersFollowOnLinesOfTheirOwn) {
    Status& status = SetUpLog();

    status.WriteStatus(L"one");
    EXPECT_EQ(program().form.txtStatus.text(), L"one");
    status.WriteStatus(L"two");
    status.WriteStatus(L"");
    status.WriteStatus(L"three");

    EXPECT_EQ(program().form.txtStatus.text(), L"one\r\ntwo\r\n\r\nthree");
}

TEST_F(StatusTest, WithTheLogOffOnlyForcedLinesReachIt) {
    Status& status = SetUpLog();

    status.WriteStatus(L"quiet");
    status.WriteStatus(L"quieter", LogMode::AsConfigured);
    EXPECT_EQ(Log(), L"");

    status.WriteStatus(L"loud", LogMode::Forced);
    EXPECT_EQ(Log(), L"0\t20240311.120000.000\t[]:\tloud\r\n");
    EXPECT_EQ(program().form.txtStatus.text(), L"quiet\r\nquieter\r\nloud");
}

TEST_F(StatusTest, ALogLineHasItsFourFields) {
    HaveRunBefore();
    Status& status = SetUpLog();
    status.setCallIdentifier(L"00042");
    around.clock.millisecondOfDay = ((14 * 60 + 23) * 60 + 5) * 1000 + 87;

    status.WriteStatus(L"Finished unloading form and closing program.");

    EXPECT_EQ(Log(),
              L"17\t20240311.142305.087\t[00042]:\tFinished unloading form and closing "
              L"program.\r\n");
}

TEST_F(StatusTest, MillisecondsHaveThreeDigitsAndHoursTwentyFour) {
    HaveRunBefore();
    Status& status = SetUpLog();
    for (const auto& [milliseconds, expected] :
         {std::pair(7, L"000000.007"), std::pair(70, L"000000.070"), std::pair(999, L"000000.999"),
          std::pair(86'399'123, L"235959.123"), std::pair(3'723'004, L"010203.004")}) {
        around.files.files[logPath].clear();
        around.clock.millisecondOfDay = milliseconds;
        status.WriteStatus(L"x");
        EXPECT_EQ(Log(), std::wstring(L"17\t20240311.") + expected + L"\t[]:\tx\r\n");
    }
}

TEST_F(StatusTest, TheLogIsAppendedToAndNeverCut) {
    HaveRunBefore();
    around.files.files[logPath] = L"old\r\n";
    Make().status.SetUpLog();

    EXPECT_TRUE(Log().starts_with(L"old\r\n17\t"));
}

TEST_F(StatusTest, ACrashWouldLeaveALineOfTheRunEvenWithTheLogOff) {
    HaveRunBefore(L"17", L"0");
    Status& status = SetUpLog();
    EXPECT_EQ(around.crashLine.path, logPath);
    EXPECT_EQ(around.crashLine.line, L"17\t<time>\t[]:\t<message>");

    status.setCallIdentifier(L"00042");
    EXPECT_EQ(around.crashLine.line, L"17\t<time>\t[00042]:\t<message>");
}

TEST_F(StatusTest, ACrashBeforeTheRunNumberIsKnownWouldLeaveALineToo) {
    HaveRunBefore(L"17", L"no number");
    EXPECT_ANY_THROW(SetUpLog());
    EXPECT_EQ(around.crashLine.path, logPath);
    EXPECT_EQ(around.crashLine.line, L"0\t<time>\t[]:\t<message>");
}

TEST_F(StatusTest, ALineThatCannotBeWrittenIsLostAndTheRunGoesOn) {
    HaveRunBefore();
    Status& status = SetUpLog();
    around.files.appendError = MakeRuntimeError(ErrorNumber::PermissionDenied);

    status.WriteStatus(L"lost");
    around.files.appendError.reset();
    status.WriteStatus(L"kept");

    EXPECT_EQ(program().form.txtStatus.text(), L"lost\r\nkept");
    EXPECT_EQ(Log(), L"17\t20240311.120000.000\t[]:\tkept\r\n");
}

TEST_F(StatusTest, WhoLooksAtTheWindowIsToldOnceThatTheLogCannotBeWritten) {
    HaveRunBefore();
    Status& status = SetUpLog();
    Form& form = program().form;
    around.files.appendError = MakeRuntimeError(ErrorNumber::PermissionDenied);
    status.WriteStatus(L"unseen");
    form.setVisible(true);
    status.WriteStatus(L"one");
    status.WriteStatus(L"two");

    EXPECT_EQ(form.txtStatus.text(), L"unseen\r\none\r\nCould not write to log file \"" +
                                         form.txtLogPath.text() + L"\": Permission denied\r\ntwo");
}

TEST_F(StatusTest, ANullInATextIsABlank) {
    HaveRunBefore();
    SetUpLog().WriteStatus(std::wstring(L"a\0b", 3));
    EXPECT_EQ(program().form.txtStatus.text(), L"a b");
    EXPECT_TRUE(Log().ends_with(L"\ta b\r\n"));
}

TEST_F(StatusTest, TheLogIsWrittenToThePathShown) {
    Status& status = SetUpLog();
    program().form.txtLogPath.setText(L"D:\\other.log");

    status.WriteStatus(L"x", LogMode::Forced);

    EXPECT_EQ(around.files.files[L"D:\\other.log"], L"0\t20240311.120000.000\t[]:\tx\r\n");
}

TEST_F(StatusTest, SettingUpMakesTheFoldersAndShowsThePath) {
    SetUpLog();

    EXPECT_EQ(around.files.folders,
              (std::set<std::wstring>{L"C:\\ProgramData\\Halvorn Systems",
                                      L"C:\\ProgramData\\Halvorn Systems\\CorvaneTo3CX"}));
    EXPECT_EQ(program().form.txtLogPath.text(), logPath);
    EXPECT_EQ(program().form.txtLogPath.tooltip(), logPath);
    EXPECT_EQ(program().form.chkWriteLog.tooltip(),
              L"Write Status messages to log file \"" + logPath + L"\"");
}

TEST_F(StatusTest, FolderAndFileAreNamedAfterTheExecutable) {
    around.info.executableName = L"Renamed";

    Make().status.SetUpLog();

    EXPECT_EQ(program().form.txtLogPath.text(),
              L"C:\\ProgramData\\Halvorn Systems\\Renamed\\Renamed.log");
}

TEST_F(StatusTest, ThePathIsEmptyWhenAFolderCannotBeMade) {
    for (const wchar_t* folder :
         {L"C:\\ProgramData\\Halvorn Systems", L"C:\\ProgramData\\Halvorn Systems\\CorvaneTo3CX"}) {
        around.files.forbiddenFolders = {folder};
        Make().status.SetUpLog();
        EXPECT_EQ(program().form.txtLogPath.text(), L"") << std::wstring(folder);
        EXPECT_EQ(program().form.chkWriteLog.tooltip(), L"Write Status messages to log file \"\"");
    }
}

TEST_F(StatusTest, ThePathIsEmptyWithoutACommonFolder) {
    around.shell.commonAppData.clear();

    Make().status.SetUpLog();

    EXPECT_EQ(program().form.txtLogPath.text(), L"");
}

TEST_F(StatusTest, TheLogsOptionIsLoadedAtOnce) {
    SetUpLog();
    EXPECT_FALSE(program().form.chkWriteLog.checked());

    around.StoreOption(L"chkWriteLog", L" 1 ");
    SetUpLog();
    EXPECT_TRUE(program().form.chkWriteLog.checked());

    around.StoreOption(L"chkWriteLog", L"yes");
    EXPECT_EQ(ErrorOf([this] { SetUpLog(); }).number, 13);
}

TEST_F(StatusTest, TheSeparatorReachesTheLogOnlyWithItsFourFields) {
    HaveRunBefore();
    SetUpLog();

    EXPECT_EQ(separator,
              L"17\t20240311.120000.000\t[]:\t"
              L"-------------------------------------------------------------------- "
              L"3/11/2024 12:00:00 PM\r\n");
    EXPECT_EQ(program().form.txtStatus.text(), L"");
}

TEST_F(StatusTest, ThereIsNoSeparatorWithTheLogOff) {
    HaveRunBefore(L"17", L"0");
    SetUpLog();

    EXPECT_EQ(separator, L"");
}

TEST_F(StatusTest, AFirstRunHasTheNumberZeroAndStoresZeroAndItsVersion) {
    Status& status = SetUpLog();
    status.WriteStatus(L"x", LogMode::Forced);

    EXPECT_TRUE(Log().starts_with(L"0\t"));
    EXPECT_EQ(Stored(L"PreviousStatus"), L"0");
    EXPECT_EQ(Stored(L"LastVersionRun"), L"1.0.0.1");
}

TEST_F(StatusTest, AnUpgradeStartsTheCounterAnewForTwoRuns) {
    HaveRunBefore(L"500");
    around.info.majorVersion = 3;
    around.info.minorVersion = 2;
    around.info.revision = 14;

    SetUpLog();
    EXPECT_TRUE(separator.starts_with(L"0\t"));
    EXPECT_EQ(Stored(L"PreviousStatus"), L"0");
    EXPECT_EQ(Stored(L"LastVersionRun"), L"3.2.0.14");

    SetUpLog();
    EXPECT_TRUE(separator.starts_with(L"0\t"));
    EXPECT_EQ(Stored(L"PreviousStatus"), L"1");

    SetUpLog();
    EXPECT_TRUE(separator.starts_with(L"1\t"));
    EXPECT_EQ(Stored(L"PreviousStatus"), L"2");
}

TEST_F(StatusTest, TheStoredVersionIsTrimmedBeforeItIsCompared) {
    HaveRunBefore();
    around.StoreOption(L"LastVersionRun", L" 1.0.0.1  ");

    SetUpLog();

    EXPECT_TRUE(separator.starts_with(L"17\t"));
    EXPECT_EQ(Stored(L"PreviousStatus"), L"18");
}

struct RunNumberCase {
    std::wstring stored;
    std::wstring used;
    std::wstring storedAfterwards;
};

class RunNumberTest : public StatusTest, public testing::WithParamInterface<RunNumberCase> {};

TEST_P(RunNumberTest, IsTakenAndCountedOn) {
    HaveRunBefore(GetParam().stored);

    SetUpLog();

    EXPECT_EQ(separator.substr(0, separator.find(L'\t')), GetParam().used);
    EXPECT_EQ(Stored(L"PreviousStatus"), GetParam().storedAfterwards);
}

INSTANTIATE_TEST_SUITE_P(
    Stored, RunNumberTest,
    testing::Values(RunNumberCase{L"0", L"0", L"1"}, RunNumberCase{L" 17 ", L"17", L"18"},
                    RunNumberCase{L"999999", L"999999", L"1000000"},
                    RunNumberCase{L"1000000", L"1000000", L"1000001"},
                    RunNumberCase{L"1000001", L"0", L"1"}, RunNumberCase{L"abc", L"0", L"1"},
                    RunNumberCase{L"", L"0", L"1"}, RunNumberCase{L"99999999999", L"0", L"1"}));

TEST_F(StatusTest, AMissingRunNumberCountsAsZero) {
    around.StoreOption(L"LastVersionRun", L"1.0.0.1");

    SetUpLog();

    EXPECT_EQ(Stored(L"PreviousStatus"), L"1");
}

TEST_F(StatusTest, AnUnreadableRegistryRaises) {
    around.registry.failingKeys.insert(FakeRegistry::ownKey);

    EXPECT_EQ(ErrorOf([this] { Make().status.SetUpLog(); }).number, -2147191503);
}

TEST_F(StatusTest, ResettingTheRunNumberStoresZero) {
    HaveRunBefore();
    SetUpLog().ResetRunNumber();

    EXPECT_EQ(Stored(L"PreviousStatus"), L"0");
}

}  // namespace
}  // namespace corvane::test
