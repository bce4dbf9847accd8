#include "environment/GoldMineProcess.h"

#include <gtest/gtest.h>

#include "fakes/FakeMessageBoxes.h"
#include "fakes/FakeProcesses.h"
#include "fakes/FakeStatusWriter.h"
#include "TestErrors.h"
#include "ui/form/Form.h"

namespace corvane::test {
namespace {

using Lines = std::vector<std::wstring>;

constexpr std::uint32_t ownSession = 1;

class GoldMineProcessTest : public testing::Test {
protected:
    void ExpectFound(const std::wstring& path) {
        EXPECT_TRUE(process.FindGoldMineExecutable());
        EXPECT_TRUE(form.GoldMineRunning);
        EXPECT_EQ(form.GoldMineExePath, path);
        EXPECT_EQ(form.txtGMInstallDir.text(), path);
        EXPECT_EQ(form.txtGMInstallDir.tooltip(), path);
        EXPECT_EQ(form.lblParam(13).caption(), L"Path to GoldMine executable:");
        EXPECT_EQ(status.lines, Lines{});
    }
    // Told in an exclamation box, and on one line as a status.
    void ExpectRefused(const std::wstring& box, const std::wstring& line) {
        form.GoldMineRunning = true;
        EXPECT_FALSE(process.FindGoldMineExecutable());
        EXPECT_FALSE(form.GoldMineRunning);
        EXPECT_EQ(form.GoldMineExePath, L"");
        EXPECT_EQ(boxes.Take(), ShownBoxes{Notice(box, BoxIcon::Exclamation)});
        EXPECT_EQ(status.lines, Lines{line});
    }

    FakeProcesses processes;
    FakeStatusWriter status;
    FakeMessageBoxes boxes;
    Form form;
    GoldMineProcess process{form, processes, status, boxes};
};

TEST_F(GoldMineProcessTest, AClientOfTheOwnSessionIsFound) {
    processes.Add(5, L"explorer.exe", ownSession, L"");
    processes.Add(77, L"gmw.exe", ownSession, L"C:\\GoldMine\\gmw.exe");
    ExpectFound(L"C:\\GoldMine\\gmw.exe");
}

TEST_F(GoldMineProcessTest, TheOlderClientIsFoundToo) {
    processes.Add(77, L"gmw6.exe", ownSession, L"C:\\GoldMine\\gmw6.exe");
    ExpectFound(L"C:\\GoldMine\\gmw6.exe");
}

TEST_F(GoldMineProcessTest, TheNewerClientIsPreferred) {
    processes.Add(76, L"gmw6.exe", ownSession, L"C:\\Old\\gmw6.exe");
    processes.Add(77, L"gmw.exe", ownSession, L"C:\\New\\gmw.exe");
    ExpectFound(L"C:\\New\\gmw.exe");
}

TEST_F(GoldMineProcessTest, AnotherSessionsClientIsPassedOver) {
    processes.Add(76, L"gmw.exe", 2, L"C:\\Theirs\\gmw.exe");
    processes.Add(77, L"gmw.exe", ownSession, L"C:\\Ours\\gmw.exe");
    ExpectFound(L"C:\\Ours\\gmw.exe");
}

TEST_F(GoldMineProcessTest, OnlyAnotherSessionsClientIsNone) {
    processes.Add(76, L"gmw.exe", 2, L"C:\\Theirs\\gmw.exe");
    EXPECT_FALSE(process.FindGoldMineExecutable());
    EXPECT_FALSE(form.GoldMineRunning);
    EXPECT_EQ(status.lines, Lines{});
}

TEST_F(GoldMineProcessTest, AProcessWhoseSessionIsUnknownNeverMatches) {
    processes.Add(76, L"gmw.exe", ownSession, L"C:\\GoldMine\\gmw.exe");
    processes.sessions.erase(76);
    EXPECT_EQ(process.IsProcessRunning(L"gmw.exe"), std::nullopt);
}

struct NameField {
    std::wstring field;
    bool matches;
};

class NameFieldTest : public GoldMineProcessTest, public testing::WithParamInterface<NameField> {};

TEST_P(NameFieldTest, MustHoldExactlyTheName) {
    processes.Add(77, L"", ownSession, L"");
    processes.entries[0].nameField = GetParam().field;
    EXPECT_EQ(process.IsProcessRunning(L"gmw.exe").has_value(), GetParam().matches);
}

INSTANTIATE_TEST_SUITE_P(Fields, NameFieldTest,
                         testing::Values(NameField{L"gmw.exe", true},
                                         NameField{L"  gmw.exe  ", true},
                                         NameField{std::wstring(L"gmw.exe\0junk", 12), true},
                                         NameField{std::wstring(L"\0gmw.exe\0junk", 13), true},
                                         NameField{std::wstring(L" gmw.exe \0junk", 14), true},
                                         NameField{std::wstring(L"\0\0gmw.exe", 9), false},
                                         NameField{L"GMW.EXE", false}, NameField{L"Gmw.exe", false},
                                         NameField{L"gmw.exe.bak", false},
                                         NameField{L"agmw.exe", false}, NameField{L"", false}));

TEST_F(GoldMineProcessTest, TheOwnSessionMustBeKnown) {
    processes.sessions.clear();
    processes.sessionError = 5;
    EXPECT_EQ(ErrorOf([&] { process.FindGoldMineExecutable(); }).description,
              L"FindGoldMineExecutable: IsProcessRunning.ProcessIdToSessionId\r\nCould not "
              L"determine Session ID for "
              L"current Process ID 42.\r\nLastError 5.");
}

struct InvalidId {
    ProcessId id;
    std::wstring text;
};

class InvalidIdTest : public GoldMineProcessTest, public testing::WithParamInterface<InvalidId> {};

TEST_P(InvalidIdTest, AnIdThatIsNotPositiveIsRefused) {
    processes.Add(GetParam().id, L"gmw.exe", ownSession, L"C:\\GoldMine\\gmw.exe");
    const std::wstring text =
        L"GoldMine is running but returned an invalid Process ID " + GetParam().text + L".";
    ExpectRefused(text, text);
}

INSTANTIATE_TEST_SUITE_P(Ids, InvalidIdTest,
                         testing::Values(InvalidId{0, L"0"}, InvalidId{0xFFFFFFFE, L"-2"}));

TEST_F(GoldMineProcessTest, AnElevatedClientCannotBeOpened) {
    processes.RunGoldMine();
    processes.openError = 5;
    ExpectRefused(
        L"GoldMine is running but could not retrieve its path.\r\n"
        L"Do not run GoldMine as Administrator.\r\n"
        L"(Error 5 opening Process ID 77)",
        L"GoldMine is running but could not retrieve its path. Do not run GoldMine as "
        L"Administrator. (Error 5 opening Process ID 77)");
}

TEST_F(GoldMineProcessTest, AClientWithoutAPathIsRefused) {
    processes.RunGoldMine();
    processes.paths.clear();
    ExpectRefused(
        L"GoldMine is running but could not retrieve its path.\r\n"
        L"Do not run GoldMine as Administrator.\r\n"
        L"(Error retrieving full path from Process Handle 1077)",
        L"GoldMine is running but could not retrieve its path. Do not run GoldMine as "
        L"Administrator. (Error retrieving full path from Process Handle 1077)");
}

}  // namespace
}  // namespace corvane::test
