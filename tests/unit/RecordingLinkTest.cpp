#include "calls/RecordingLink.h"

#include <gtest/gtest.h>

#include <vector>

#include "fakes/FakeClock.h"
#include "fakes/FakeFiles.h"
#include "fakes/FakeMessageBoxes.h"
#include "fakes/FakeStatusWriter.h"
#include "TestErrors.h"
#include "ui/form/Form.h"

namespace corvane::test {
namespace {

using Lines = std::vector<std::wstring>;

constexpr double oneSecond = 1.0 / 86400;

double Date(int year, int month, int day, int hour = 12, int minute = 0, int secondOfMinute = 0) {
    LocalTimeMs time;
    time.year = year;
    time.month = month;
    time.day = day;
    time.hour = hour;
    time.minute = minute;
    time.second = secondOfMinute;
    return AutomationDate(time);
}

RuntimeError Failure(std::int32_t number) {
    RuntimeError error;
    error.number = number;
    error.source = L"Scripting";
    error.description = L"went wrong";
    error.helpFile = L"help.chm";
    error.helpContext = 99;
    return error;
}

// A folder whose newest file was written at noon of 2024-03-11, which is now.
class RecordingLinkTest : public testing::Test {
protected:
    RecordingLinkTest() {
        clock.SetDay(2024, 3, 11);
        UseFolder(L"\\\\srv\\rec");
        files.newest = {L"call (00000123).wav", Date(2024, 3, 11), 17};
        files.onSearch = [this] { clock.Advance(searchMilliseconds); };
        form.txtCallIdentifier.setText(L"00000123:2");
        form.txtRecordingFileMaxAgeSeconds.setText(L"60");
    }
    void UseFolder(const std::wstring& folder) {
        files.folders.insert(folder);
        form.txtLinkedItemPath.setText(folder);
    }
    bool GetFileLink() { return recordingLink.GetFileLink(link); }
    void ExpectRefused(const std::wstring& reason) {
        EXPECT_FALSE(GetFileLink());
        EXPECT_EQ(link.RecordingPathOrReason, reason);
        EXPECT_EQ(link.LinkHTML, L"");
        EXPECT_EQ(link.LinkDocumentHTML, L"");
        EXPECT_FALSE(link.linkPrepared());
        ASSERT_FALSE(status.lines.empty());
        EXPECT_EQ(status.lines.back(), reason);
    }

    std::int64_t searchMilliseconds = 0;
    FakeFileSystem files;
    FakeStatusWriter status;
    FakeMessageBoxes boxes;
    FakeClock clock;
    Form form;
    RecordingLink recordingLink{form, files, status, boxes, clock};
    RecordingLinkState link{L"old path", L"old link", L"old document"};
};

TEST_F(RecordingLinkTest, TheNewestFileIsLinked) {
    EXPECT_TRUE(GetFileLink());

    const std::wstring path = L"\\\\srv\\rec\\call (00000123).wav";
    EXPECT_EQ(link.RecordingPathOrReason, path);
    EXPECT_EQ(link.LinkHTML,
              L"<A href='file://\\\\srv\\rec\\call (00000123).wav'>"
              L"\\\\srv\\rec\\call (00000123).wav</A>");
    EXPECT_EQ(link.LinkDocumentHTML,
              L"<!DOCTYPE HTML PUBLIC '-//W3C//DTD HTML 4.0 Transitional//EN'>\r\n"
              L"<HTML><HEAD>\r\n"
              L"<STYLE type=text/css> P, UL, OL, DL, DIR, MENU, PRE { margin: 0 auto;}</STYLE>\r\n"
              L"<META name=GENERATOR content='MSHTML 8.00.7601.17824'></HEAD>\r\n"
              L"<BODY leftMargin=1 rightMargin=1 topMargin=1><FONT size=2 face='Segoe "
              L"UI,Tahoma'>\r\n"
              L"<DIV><A href='file://\\\\srv\\rec\\call (00000123).wav'>"
              L"\\\\srv\\rec\\call (00000123).wav</A></A><BR></DIV></FONT></BODY></HTML>\r\n");
    EXPECT_EQ(status.lines,
              (Lines{L"Checked 17 files in \"\\\\srv\\rec\" in 0.000 seconds.",
                     L"Most recent file is \"call (00000123).wav\", modified 3/11/2024 12:00:00 "
                     L"PM.",
                     L"Prepared link to \"\\\\srv\\rec\\call (00000123).wav\"."}));
    EXPECT_EQ(files.searches,
              (std::vector<FakeFileSystem::Search>{{L"\\\\srv\\rec\\", L"*.*", 167}}));
}

TEST_F(RecordingLinkTest, AFolderWithATrailingBackslashGivesTheSamePathAndIsReportedAsTyped) {
    UseFolder(L"\\\\srv\\rec\\");
    EXPECT_TRUE(GetFileLink());
    EXPECT_EQ(link.RecordingPathOrReason, L"\\\\srv\\rec\\call (00000123).wav");
    EXPECT_EQ(status.lines[0], L"Checked 17 files in \"\\\\srv\\rec\\\" in 0.000 seconds.");
}

TEST_F(RecordingLinkTest, TheSearchIsTimed) {
    searchMilliseconds = 1234;
    EXPECT_TRUE(GetFileLink());
    EXPECT_EQ(status.lines[0], L"Checked 17 files in \"\\\\srv\\rec\" in 1.234 seconds.");
}

TEST_F(RecordingLinkTest, ThePathIsNotEscaped) {
    files.newest.name = L"a & 'b' <c>.wav";
    EXPECT_TRUE(GetFileLink());
    EXPECT_EQ(link.LinkHTML,
              L"<A href='file://\\\\srv\\rec\\a & 'b' <c>.wav'>\\\\srv\\rec\\a & 'b' <c>.wav</A>");
}

TEST_F(RecordingLinkTest, AFolderThatCannotBeAccessedIsToldInABoxToo) {
    form.txtLinkedItemPath.setText(L"X:\\None");
    ExpectRefused(L"Could not access recordings folder \"X:\\None\". Link to recording not saved.");
    EXPECT_EQ(boxes.Take(),
              ShownBoxes{Notice(L"Could not access recordings folder:\r\n\r\nX:\\None\r\n\r\nLink "
                                L"to recording will not be saved.")});
    EXPECT_EQ(status.lines.size(), 1U);
    EXPECT_TRUE(files.searches.empty());
}

TEST_F(RecordingLinkTest, AFolderWithoutFilesHasNothingToLink) {
    files.newest = {L"", 0, 0};
    ExpectRefused(
        L"No files found in recordings folder \"\\\\srv\\rec\". Link to recording not saved.");
    EXPECT_EQ(status.lines[0], L"Checked 0 files in \"\\\\srv\\rec\" in 0.000 seconds.");
    EXPECT_EQ(status.lines.size(), 2U);
}

struct Age {
    std::int64_t seconds;
    std::wstring maxAge;
    std::wstring reason;  // empty: accepted
};

class AgeTest : public RecordingLinkTest, public testing::WithParamInterface<Age> {};

TEST_P(AgeTest, AFileIsLinkedUpToTheMaximumAge) {
    form.chkConfirmRecentRecordingFile.setChecked(true);
    form.txtRecordingFileMaxAgeSeconds.setText(GetParam().maxAge);
    clock.millisecondOfDay += 999;  // Fractions of the current second do not count.
    files.newest.modified -= static_cast<double>(GetParam().seconds) * oneSecond;
    if (GetParam().reason.empty()) {
        EXPECT_TRUE(GetFileLink());
    } else {
        ExpectRefused(GetParam().reason);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Ages, AgeTest,
    testing::Values(
        Age{0, L"60", L""}, Age{59, L"60", L""}, Age{60, L"60", L""},
        Age{61, L"60",
            L"The most recent file in the recordings folder, \"\\\\srv\\rec\\call "
            L"(00000123).wav\", was created 61 seconds ago, which exceeds the specified maximum "
            L"age of 60 seconds. Link to recording not saved."},
        Age{1, L"0",
            L"The most recent file in the recordings folder, \"\\\\srv\\rec\\call "
            L"(00000123).wav\", was created 1 seconds ago, which exceeds the specified maximum age "
            L"of 0 seconds. Link to recording not saved."},
        // A clock that runs behind the file server's.
        Age{-30, L"0", L""}, Age{86400, L"86400", L""}, Age{86400, L"99999999999", L""},
        Age{86401, L" 86400 ",
            L"The most recent file in the recordings folder, \"\\\\srv\\rec\\call "
            L"(00000123).wav\", was created 86401 seconds ago, which exceeds the specified maximum "
            L"age of  86400  seconds. Link to recording not saved."}));

TEST_F(RecordingLinkTest, TheAgeDoesNotCountUnlessAskedFor) {
    form.txtRecordingFileMaxAgeSeconds.setText(L"not a number");
    files.newest.modified = Date(1999, 1, 1);
    EXPECT_TRUE(GetFileLink());
}

const std::wstring moreThanAYear =
    L"The most recent file in the recordings folder, \"\\\\srv\\rec\\call (00000123).wav\", was "
    L"created more than a year ago. Link to recording not saved.";

struct YearGuard {
    double modified;
    bool refused;
};

class YearGuardTest : public RecordingLinkTest, public testing::WithParamInterface<YearGuard> {};

TEST_P(YearGuardTest, OnlyTheYearNumbersCount) {
    form.chkConfirmRecentRecordingFile.setChecked(true);
    form.txtRecordingFileMaxAgeSeconds.setText(L"2147483647");
    files.newest.modified = GetParam().modified;
    if (GetParam().refused) {
        ExpectRefused(moreThanAYear);
    } else {
        EXPECT_TRUE(GetFileLink());
    }
}

INSTANTIATE_TEST_SUITE_P(Dates, YearGuardTest,
                         testing::Values(YearGuard{Date(2022, 12, 31, 23, 59, 59), true},
                                         YearGuard{Date(2023, 1, 1, 0, 0, 0), false},
                                         YearGuard{Date(2024, 1, 1), false},
                                         YearGuard{Date(2025, 1, 1), false},
                                         YearGuard{Date(1980, 1, 1), true}));

TEST_F(RecordingLinkTest, AFileOfLastYearIsThenCheckedBySeconds) {
    form.chkConfirmRecentRecordingFile.setChecked(true);
    files.newest.modified = Date(2023, 3, 12);
    ExpectRefused(
        L"The most recent file in the recordings folder, \"\\\\srv\\rec\\call (00000123).wav\", "
        L"was created 31536000 seconds ago, which exceeds the specified maximum age of 60 seconds. "
        L"Link to recording not saved.");
}

TEST_F(RecordingLinkTest, AMaximumAgeThatIsNoNumberIsATypeMismatch) {
    form.chkConfirmRecentRecordingFile.setChecked(true);
    form.txtRecordingFileMaxAgeSeconds.setText(L"a minute");
    const RuntimeError error = ErrorOf([&] { GetFileLink(); });
    EXPECT_EQ(error.number, 13);
    EXPECT_EQ(error.description, L"GetFileLink: txtRecordingFileMaxAgeSeconds: Type mismatch");
    EXPECT_EQ(link.RecordingPathOrReason, L"");
}

struct Identifier {
    std::wstring identifier;
    std::wstring folder;
    std::wstring name;
    std::wstring reason;  // empty: accepted
};

class IdentifierTest : public RecordingLinkTest, public testing::WithParamInterface<Identifier> {};

TEST_P(IdentifierTest, MustStandInBracketsInThePath) {
    form.chkConfirmLinkCallIdentifier.setChecked(true);
    form.txtCallIdentifier.setText(GetParam().identifier);
    UseFolder(GetParam().folder);
    files.newest.name = GetParam().name;
    if (GetParam().reason.empty()) {
        EXPECT_TRUE(GetFileLink());
    } else {
        ExpectRefused(GetParam().reason);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Names, IdentifierTest,
    testing::Values(
        Identifier{L"00000123:2", L"C:\\Rec", L"x(00000123)y.wav", L""},
        Identifier{L"00000123", L"C:\\Rec", L"x(00000123)y.wav", L""},
        Identifier{L"00000123:2:7", L"C:\\Rec", L"(00000123)", L""},
        Identifier{L"00000123", L"C:\\Rec (00000123)", L"a.wav", L""},
        Identifier{L"", L"C:\\Rec", L"a().wav", L""},
        Identifier{L":5", L"C:\\Rec", L"a().wav", L""},
        Identifier{L"", L"C:\\Rec", L"a.wav",
                   L"The most recent file in the recordings folder \"C:\\Rec\\a.wav\" does not "
                   L"include the 3CX Call Identifier \"\". Link not saved."},
        Identifier{L"00000123:2", L"C:\\Rec", L"00000123.wav",
                   L"The most recent file in the recordings folder \"C:\\Rec\\00000123.wav\" does "
                   L"not include the 3CX Call Identifier \"00000123\". Link not saved."},
        Identifier{L"00000123:2", L"C:\\Rec", L"(00000123:2).wav",
                   L"The most recent file in the recordings folder \"C:\\Rec\\(00000123:2).wav\" "
                   L"does not include the 3CX Call Identifier \"00000123\". Link not saved."},
        Identifier{L"abc", L"C:\\Rec", L"(ABC).wav",
                   L"The most recent file in the recordings folder \"C:\\Rec\\(ABC).wav\" does not "
                   L"include the 3CX Call Identifier \"abc\". Link not saved."}));

TEST_F(RecordingLinkTest, TheIdentifierDoesNotCountUnlessAskedFor) {
    files.newest.name = L"a.wav";
    EXPECT_TRUE(GetFileLink());
}

TEST_F(RecordingLinkTest, TheAgeIsCheckedBeforeTheIdentifier) {
    form.chkConfirmRecentRecordingFile.setChecked(true);
    form.chkConfirmLinkCallIdentifier.setChecked(true);
    files.newest = {L"a.wav", Date(2020, 1, 1), 1};
    ExpectRefused(
        L"The most recent file in the recordings folder, \"\\\\srv\\rec\\a.wav\", was created more "
        L"than a year ago. Link to recording not saved.");
}

TEST_F(RecordingLinkTest, PermissionDeniedIsAReason) {
    files.searchError = Failure(70);
    ExpectRefused(
        L"You need at least Read and List Folder Contents permissions on the recordings folder "
        L"\"\\\\srv\\rec\". Link to recording not saved.");
    EXPECT_EQ(status.lines.size(), 1U);
}

TEST_F(RecordingLinkTest, AnyOtherErrorIsRaisedAgainWithTheProcedureBeforeItsDescription) {
    files.searchError = Failure(76);
    const RuntimeError error = ErrorOf([&] { GetFileLink(); });
    EXPECT_EQ(error.number, 76);
    EXPECT_EQ(error.source, L"Scripting");
    EXPECT_EQ(error.description, L"GetFileLink: went wrong");
    EXPECT_EQ(error.helpFile, L"help.chm");
    EXPECT_EQ(error.helpContext, 99);
    EXPECT_EQ(link.RecordingPathOrReason, L"");
    EXPECT_EQ(link.LinkHTML, L"");
    EXPECT_EQ(link.LinkDocumentHTML, L"");
}

TEST_F(RecordingLinkTest, AnEmptyFolderBoxMayBeLeftUnchecked) {
    form.txtLinkedItemPath.setText(L"");
    EXPECT_TRUE(recordingLink.MayLeaveFolder());
    EXPECT_TRUE(status.lines.empty());
    EXPECT_TRUE(files.searches.empty());
}

TEST_F(RecordingLinkTest, AFolderBoxWithAFolderThatIsNotThereMayNotBeLeft) {
    form.txtLinkedItemPath.setText(L"X:\\None");
    EXPECT_FALSE(recordingLink.MayLeaveFolder());
    EXPECT_EQ(boxes.Take(),
              ShownBoxes{Notice(L"Folder not found. Please specify a valid folder that you have "
                                L"permission to access, e.g. \\\\Server\\Share\\Folder or "
                                L"X:\\Folder.")});
    EXPECT_TRUE(status.lines.empty());
}

TEST_F(RecordingLinkTest, LeavingTheFolderBoxReportsTheNewestFile) {
    EXPECT_TRUE(recordingLink.MayLeaveFolder());
    EXPECT_EQ(status.lines,
              (Lines{L"Checked 17 files in \"\\\\srv\\rec\" in 0.000 seconds.",
                     L"Most recent file is \"call (00000123).wav\", modified 3/11/2024 12:00:00 "
                     L"PM."}));
    EXPECT_EQ(files.searches,
              (std::vector<FakeFileSystem::Search>{{L"\\\\srv\\rec\\", L"*.*", 167}}));
}

TEST_F(RecordingLinkTest, LeavingTheFolderBoxReportsThatThereAreNoFiles) {
    files.newest = {L"", 0, 0};
    EXPECT_TRUE(recordingLink.MayLeaveFolder());
    EXPECT_EQ(status.lines, (Lines{L"Checked 0 files in \"\\\\srv\\rec\" in 0.000 seconds.",
                                   L"No files found."}));
}

// A share dropped in the middle: which file is the newest is not known.
TEST_F(RecordingLinkTest, AFolderThatWasNotReadWholeGivesNoLink) {
    for (const wchar_t* name : {L"call (00000123).wav", L""}) {
        files.newest = {name, Date(2024, 3, 11), 17, false};
        status.lines.clear();
        const std::wstring reason =
            L"Could not read all of recordings folder \"\\\\srv\\rec\". Link to recording not "
            L"saved.";
        ExpectRefused(reason);
        const Lines expected = {L"Checked 17 files in \"\\\\srv\\rec\" in 0.000 seconds.", reason};
        EXPECT_EQ(status.lines, expected);

        status.lines.clear();
        EXPECT_TRUE(recordingLink.MayLeaveFolder());
        EXPECT_EQ(status.lines, expected);
    }
}

TEST_F(RecordingLinkTest, AFolderWithoutPermissionMayNotBeLeft) {
    files.searchError = Failure(70);
    EXPECT_FALSE(recordingLink.MayLeaveFolder());
    EXPECT_EQ(boxes.Take(), ShownBoxes{Notice(L"You need at least Read and List Folder Contents "
                                              L"permissions on the recordings folder.")});
    EXPECT_TRUE(status.lines.empty());
}

TEST_F(RecordingLinkTest, AnyOtherErrorWhileLeavingCarriesTheSameProcedure) {
    files.searchError = Failure(76);
    const RuntimeError error = ErrorOf([&] { static_cast<void>(recordingLink.MayLeaveFolder()); });
    EXPECT_EQ(error.number, 76);
    EXPECT_EQ(error.description, L"GetFileLink: went wrong");
}

}  // namespace
}  // namespace corvane::test
