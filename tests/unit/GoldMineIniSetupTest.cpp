#include "dialing/GoldMineIniSetup.h"

#include "fakes/FakeFiles.h"
#include "GoldMineFixture.h"

namespace corvane::test {
namespace {

const std::wstring annsIni = L"C:\\GM\\ANN.INI";
const std::wstring annsIniCopy = L"C:\\GM\\ANN.INI.bak-CorvaneTo3CX";
const std::wstring gmIni = L"C:\\GM\\GM.INI";
const std::wstring expectedDial = L"&Dial,,C:\\Corvane\\CorvaneTo3CX.exe %s";

const std::wstring modemQuestion =
    L"Okay to define a dummy modem in your GoldMine <user>.INI file? This is required for outbound "
    L"dialing via 3CX.";
const std::wstring dialQuestion =
    L"Okay to add a DDEDial instruction to your GoldMine <user>.INI file? This is required for "
    L"outbound dialing via 3CX.";
const std::wstring tapiQuestion =
    L"Okay to set GoldMine to \"Dial numbers as entered\" instead of formatting using TAPI? This "
    L"is "
    L"required for outbound dialing via 3CX.";
const std::wstring restartNotice =
    L"Please close and restart GoldMine to load the updated <user>.INI file.";

// A GoldMine whose INI files ask for no change.
class GoldMineIniSetupTest : public GoldMineFixture {
protected:
    GoldMineIniSetupTest() {
        AnswerMacro(L"&amp;ProgramDataDir", L"C:\\GM\\");
        AnswerMacro(L"&amp;SysDir", L"D:\\Sys\\");
        AnswerMacro(L"&amp;UserName", L"ANN");
        form.txtAppPath.setText(L"C:\\Corvane\\CorvaneTo3CX.exe");
        files.files = {{annsIni, L""}, {gmIni, L""}};
        SetModem(L"DeviceID", L"5");
        SetModem(L"DDEDial", expectedDial);
        SetModem(L"TAPITranslation", L"0");
    }
    void SetModem(const std::wstring& key, const std::wstring& value) {
        iniFiles.files[annsIni][{L"Modem", key}] = value;
    }
    // Nothing is set up: all three questions are due.
    void ForgetModem() { iniFiles.files[annsIni].clear(); }
    void AnswerQuestions(std::initializer_list<BoxAnswer> answers) { boxes.answers = answers; }

    FakeFileSystem files;
    FakeIniFiles iniFiles;
    GoldMineIniSetup setup{form, macro, files, iniFiles, status, boxes};
};

TEST_F(GoldMineIniSetupTest, ACompleteSetUpIsLeftAlone) {
    EXPECT_TRUE(setup.Run());
    EXPECT_TRUE(iniFiles.writes.empty());
    EXPECT_EQ(form.txtGoldMineUserIniPath.text(), annsIni);
    EXPECT_EQ(form.txtGoldMineGMIniPath.text(), gmIni);
    EXPECT_EQ(form.GoldMineUserName, L"ANN");
    EXPECT_EQ(goldMine.commands,
              (Lines{MacroCommand(L"&amp;ProgramDataDir"), MacroCommand(L"&amp;UserName")}));
}

TEST_F(GoldMineIniSetupTest, AUserWithoutANameHasAFileWithoutOne) {
    AnswerMacro(L"&amp;UserName", L"");
    EXPECT_FALSE(setup.Run());
    EXPECT_EQ(boxes.Take(),
              ShownBoxes{Notice(L"Could not find GoldMine <user>.INI file\r\nC:\\GM\\.INI",
                                BoxIcon::Exclamation)});
}

class NoProgramDataDirTest : public GoldMineIniSetupTest, public testing::WithParamInterface<bool> {
protected:
    void Fail(const std::wstring& escapedName) {
        if (GetParam()) {
            AnswerMacro(escapedName, L"");
        } else {
            FailMacro(escapedName);
        }
    }
};

TEST_P(NoProgramDataDirTest, TheSystemFolderServes) {
    Fail(L"&amp;ProgramDataDir");
    files.files = {{L"D:\\Sys\\ANN.INI", L""}, {L"D:\\Sys\\GM.INI", L""}};
    iniFiles.files[L"D:\\Sys\\ANN.INI"] = iniFiles.files[annsIni];
    EXPECT_TRUE(setup.Run());
    EXPECT_EQ(form.txtGoldMineUserIniPath.text(), L"D:\\Sys\\ANN.INI");
    EXPECT_EQ(form.txtGoldMineGMIniPath.text(), L"D:\\Sys\\GM.INI");
}

TEST_P(NoProgramDataDirTest, WithoutTheSystemFolderTheSetUpStops) {
    Fail(L"&amp;ProgramDataDir");
    Fail(L"&amp;SysDir");
    EXPECT_FALSE(setup.Run());
    EXPECT_EQ(boxes.Take(), ShownBoxes{Notice(L"Could not retrieve ProgramDataDir or SysDir",
                                              BoxIcon::Exclamation)});
    EXPECT_EQ(goldMine.commands.back(), MacroCommand(L"&amp;SysDir"));
}

INSTANTIATE_TEST_SUITE_P(EmptyOrFailed, NoProgramDataDirTest, testing::Bool());

TEST_F(GoldMineIniSetupTest, WithoutAUserNameTheSetUpStops) {
    FailMacro(L"&amp;UserName");
    EXPECT_FALSE(setup.Run());
    EXPECT_EQ(boxes.Take(),
              ShownBoxes{Notice(L"Could not retrieve UserName", BoxIcon::Exclamation)});
}

TEST_F(GoldMineIniSetupTest, WithoutTheUserIniTheSetUpStops) {
    files.files.erase(annsIni);
    ForgetModem();
    EXPECT_FALSE(setup.Run());
    EXPECT_EQ(boxes.Take(),
              ShownBoxes{Notice(L"Could not find GoldMine <user>.INI file\r\nC:\\GM\\ANN.INI",
                                BoxIcon::Exclamation)});
    EXPECT_EQ(form.txtGoldMineUserIniPath.text(), annsIni);
    EXPECT_EQ(form.txtGoldMineGMIniPath.text(), L"");
}

TEST_F(GoldMineIniSetupTest, FolderAndUserAreJoinedAsTheyCome) {
    AnswerMacro(L"&amp;ProgramDataDir", L"C:\\GM");
    EXPECT_FALSE(setup.Run());
    EXPECT_EQ(form.txtGoldMineUserIniPath.text(), L"C:\\GMANN.INI");
    EXPECT_EQ(boxes.Take().size(), 1U);
}

TEST_F(GoldMineIniSetupTest, WithoutGmIniTheSetUpGoesOnWithPlainNotes) {
    files.files.erase(gmIni);
    form.NotesAreHTML = true;
    EXPECT_TRUE(setup.Run());
    EXPECT_EQ(boxes.Take(),
              ShownBoxes{Notice(L"Could not find GoldMine GM.INI file\r\nC:\\GM\\GM.INI",
                                BoxIcon::Exclamation)});
    EXPECT_FALSE(form.NotesAreHTML);
}

struct HtmlNotesKey {
    std::wstring value;
    bool html;
};

class HtmlNotesKeyTest : public GoldMineIniSetupTest,
                         public testing::WithParamInterface<HtmlNotesKey> {};

TEST_P(HtmlNotesKeyTest, NotesAreHtmlUnlessTheKeySaysZero) {
    iniFiles.files[gmIni][{L"GoldMine", L"HTML_Cal_Notes"}] = GetParam().value;
    EXPECT_TRUE(setup.Run());
    EXPECT_EQ(form.NotesAreHTML, GetParam().html);
}

INSTANTIATE_TEST_SUITE_P(Values, HtmlNotesKeyTest,
                         testing::Values(HtmlNotesKey{L"0", false}, HtmlNotesKey{L"1", true},
                                         HtmlNotesKey{L"", true}, HtmlNotesKey{L"00", true},
                                         HtmlNotesKey{L"no", true}));

// One step: what stands in the user INI, the question if one is due, and what Yes writes.
struct Step {
    std::wstring key;
    std::wstring current;
    std::wstring question;  // empty: accepted as it is
    std::wstring written;
    std::wstring failure;
};

class StepTest : public GoldMineIniSetupTest, public testing::WithParamInterface<Step> {
protected:
    StepTest() { SetModem(GetParam().key, GetParam().current); }
    [[nodiscard]] std::wstring Stored() const {
        return iniFiles.files.at(annsIni).at({L"Modem", GetParam().key});
    }
};

using AcceptedTest = StepTest;

TEST_P(AcceptedTest, TheValueIsLeftAlone) {
    EXPECT_TRUE(setup.Run());
    EXPECT_TRUE(iniFiles.writes.empty());
    EXPECT_EQ(Stored(), GetParam().current);
}

INSTANTIATE_TEST_SUITE_P(Accepted, AcceptedTest,
                         testing::Values(Step{L"DeviceID", L"5", {}, {}, {}},
                                         Step{L"DeviceID", L"0", {}, {}, {}},
                                         Step{L"DeviceID", L"-2", {}, {}, {}},
                                         Step{L"DeviceID", L"-10", {}, {}, {}},
                                         Step{L"DeviceID", L"none", {}, {}, {}},
                                         Step{L"DDEDial", expectedDial, {}, {}, {}},
                                         Step{L"TAPITranslation", L"0", {}, {}, {}},
                                         Step{L"TAPITranslation", L"2", {}, {}, {}},
                                         Step{L"TAPITranslation", L"01", {}, {}, {}}));

class DueStepTest : public StepTest {};

TEST_P(DueStepTest, YesWritesTheValueAndAsksForARestart) {
    AnswerQuestions({BoxAnswer::Yes});
    EXPECT_TRUE(setup.Run());
    EXPECT_EQ(boxes.Take(), (ShownBoxes{Question(GetParam().question), Notice(restartNotice)}));
    EXPECT_EQ(iniFiles.writes, Lines{GetParam().key + L"=" + GetParam().written});
    EXPECT_EQ(Stored(), GetParam().written);
}

TEST_P(DueStepTest, TheFileIsCopiedBeforeItIsChanged) {
    files.files[annsIni] = L"as GoldMine wrote it";
    AnswerQuestions({BoxAnswer::No, BoxAnswer::Yes});
    EXPECT_FALSE(setup.Run());
    EXPECT_FALSE(files.FileExists(annsIniCopy));

    EXPECT_TRUE(setup.Run());

    EXPECT_EQ(files.files[annsIniCopy], L"as GoldMine wrote it");
    static_cast<void>(boxes.Take());
}

TEST_P(DueStepTest, AFileThatCannotBeCopiedIsChangedAllTheSame) {
    files.copyFails = true;
    AnswerQuestions({BoxAnswer::Yes});
    EXPECT_TRUE(setup.Run());
    EXPECT_EQ(Stored(), GetParam().written);
    EXPECT_EQ(status.lines, Lines{L"Could not copy C:\\GM\\ANN.INI to " + annsIniCopy + L"."});
    static_cast<void>(boxes.Take());
}

TEST_P(DueStepTest, ASecondRunFindsNothingToDo) {
    AnswerQuestions({BoxAnswer::Yes});
    EXPECT_TRUE(setup.Run());
    static_cast<void>(boxes.Take());
    EXPECT_TRUE(setup.Run());
    EXPECT_EQ(boxes.Take(), ShownBoxes{});
    EXPECT_EQ(iniFiles.writes.size(), 1U);
}

TEST_P(DueStepTest, NoStopsAndWritesNothing) {
    AnswerQuestions({BoxAnswer::No});
    EXPECT_FALSE(setup.Run());
    EXPECT_EQ(boxes.Take(), ShownBoxes{Question(GetParam().question)});
    EXPECT_TRUE(iniFiles.writes.empty());
}

TEST_P(DueStepTest, AFailedWriteStops) {
    AnswerQuestions({BoxAnswer::Yes});
    iniFiles.failingKeys = {GetParam().key};
    EXPECT_FALSE(setup.Run());
    EXPECT_EQ(boxes.Take(),
              (ShownBoxes{Question(GetParam().question), Notice(GetParam().failure)}));
    EXPECT_TRUE(iniFiles.writes.empty());
}

const std::wstring modemFailure =
    L"Failed to update C:\\GM\\ANN.INI [Modem] section with a dummy modem.";
const std::wstring dialFailure =
    L"Failed to update C:\\GM\\ANN.INI [Modem] section with the needed DDEDial instruction.";
const std::wstring tapiFailure =
    L"Failed to update C:\\GM\\ANN.INI [Modem] section with TAPITranslation=0.";

INSTANTIATE_TEST_SUITE_P(
    Due, DueStepTest,
    testing::Values(
        Step{L"DeviceID", L"", modemQuestion, L"0", modemFailure},
        Step{L"DeviceID", L"-1", modemQuestion, L"0", modemFailure},
        Step{L"DDEDial", L"", dialQuestion, expectedDial, dialFailure},
        Step{L"DDEDial", L"&Dial,,C:\\Other.exe %s",
             L"Your GoldMine <user>.INI file already has this DDEDial instruction:\r\n\r\n"
             L"&Dial,,C:\\Other.exe %s\r\n\r\n"
             L"Okay to change that to point to Corvane to 3CX? The new instruction will be:\r\n\r\n"
             L"&Dial,,C:\\Corvane\\CorvaneTo3CX.exe %s",
             expectedDial, dialFailure},
        Step{L"DDEDial", L"&dial,,c:\\corvane\\corvaneto3cx.exe %s",
             L"Your GoldMine <user>.INI file already has this DDEDial instruction:\r\n\r\n"
             L"&dial,,c:\\corvane\\corvaneto3cx.exe %s\r\n\r\n"
             L"Okay to change that to point to Corvane to 3CX? The new instruction will be:\r\n\r\n"
             L"&Dial,,C:\\Corvane\\CorvaneTo3CX.exe %s",
             expectedDial, dialFailure},
        Step{L"TAPITranslation", L"", tapiQuestion, L"0", tapiFailure},
        Step{L"TAPITranslation", L"1", tapiQuestion, L"0", tapiFailure}));

TEST_F(GoldMineIniSetupTest, AllThreeStepsRunInOrderAndTheRestartIsAskedForOnce) {
    ForgetModem();
    AnswerQuestions({BoxAnswer::Yes, BoxAnswer::Yes, BoxAnswer::Yes});
    EXPECT_TRUE(setup.Run());
    EXPECT_EQ(boxes.Take(), (ShownBoxes{Question(modemQuestion), Question(dialQuestion),
                                        Question(tapiQuestion), Notice(restartNotice)}));
    EXPECT_EQ(iniFiles.writes,
              (Lines{L"DeviceID=0", L"DDEDial=" + expectedDial, L"TAPITranslation=0"}));
}

TEST_F(GoldMineIniSetupTest, TheCopyOfTheFirstChangeStays) {
    ForgetModem();
    files.files[annsIniCopy] = L"years ago";
    AnswerQuestions({BoxAnswer::Yes, BoxAnswer::Yes, BoxAnswer::Yes});
    EXPECT_TRUE(setup.Run());
    EXPECT_EQ(files.files[annsIniCopy], L"years ago");
    EXPECT_EQ(status.lines, Lines{});
    static_cast<void>(boxes.Take());
}

TEST_F(GoldMineIniSetupTest, WithoutGmIniTheQuestionsAreStillAsked) {
    files.files.erase(gmIni);
    ForgetModem();
    AnswerQuestions({BoxAnswer::Yes, BoxAnswer::Yes, BoxAnswer::No});
    EXPECT_FALSE(setup.Run());
    EXPECT_EQ(boxes.Take(), (ShownBoxes{Notice(L"Could not find GoldMine GM.INI file\r\n"
                                               L"C:\\GM\\GM.INI",
                                               BoxIcon::Exclamation),
                                        Question(modemQuestion), Question(dialQuestion),
                                        Question(tapiQuestion)}));
    EXPECT_EQ(iniFiles.writes, (Lines{L"DeviceID=0", L"DDEDial=" + expectedDial}));
}

TEST_F(GoldMineIniSetupTest, ADeclinedStepKeepsWhatWasWrittenAndSkipsTheRest) {
    ForgetModem();
    AnswerQuestions({BoxAnswer::Yes, BoxAnswer::No});
    EXPECT_FALSE(setup.Run());
    EXPECT_EQ(boxes.Take(), (ShownBoxes{Question(modemQuestion), Question(dialQuestion)}));
    EXPECT_EQ(iniFiles.writes, Lines{L"DeviceID=0"});
}

}  // namespace
}  // namespace corvane::test
