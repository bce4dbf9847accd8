#include "environment/GoldMineVersion.h"

#include "dialing/GoldMineIniSetup.h"
#include "fakes/FakeFiles.h"
#include "GoldMineFixture.h"
#include "ui/form/EnablingRules.h"

namespace corvane::test {
namespace {

class GoldMineVersionTest : public GoldMineFixture {
protected:
    FakeFileSystem files;
    FakeIniFiles iniFiles;
    GoldMineIniSetup setup{form, macro, files, iniFiles, status, boxes};
    GoldMineVersion version{form, macro, setup, status, boxes};
    bool versionOK = true;
};

struct VersionText {
    std::wstring text;
    bool recentEnough;
};

class VersionTextTest : public GoldMineVersionTest,
                        public testing::WithParamInterface<VersionText> {};

TEST_P(VersionTextTest, SixPointSevenOrLaterIsRecentEnough) {
    AnswerMacro(L"&amp;Version", GetParam().text);
    versionOK = !GetParam().recentEnough;
    EXPECT_TRUE(version.CheckGoldMineVersion(versionOK));
    EXPECT_EQ(versionOK, GetParam().recentEnough);
    EXPECT_EQ(status.lines, Lines{L"GoldMine version " + GetParam().text + L" detected."});
}

INSTANTIATE_TEST_SUITE_P(Versions, VersionTextTest,
                         testing::Values(VersionText{L"2014.1", true}, VersionText{L"7.0", true},
                                         VersionText{L"6.7.1", true}, VersionText{L"6.7", true},
                                         VersionText{L"6.8", true}, VersionText{L"6.9.9", true},
                                         VersionText{L"10.0", true}, VersionText{L"6.70.50", true},
                                         VersionText{L"6.5", false}, VersionText{L"6.6.9", false},
                                         VersionText{L"6.10", false}, VersionText{L"5.9", false},
                                         VersionText{L"0.9", false}));

class NoVersionTextTest : public GoldMineVersionTest,
                          public testing::WithParamInterface<std::wstring> {};

TEST_P(NoVersionTextTest, CannotBeParsed) {
    AnswerMacro(L"&amp;Version", GetParam());
    EXPECT_FALSE(version.CheckGoldMineVersion(versionOK));
    EXPECT_FALSE(versionOK);
    EXPECT_EQ(boxes.Take(), ShownBoxes{Notice(L"Error parsing GoldMine version " + GetParam(),
                                              BoxIcon::Exclamation)});
    EXPECT_EQ(status.lines, Lines{L"Error parsing GoldMine version " + GetParam()});
}

INSTANTIATE_TEST_SUITE_P(Texts, NoVersionTextTest,
                         testing::Values(L"65", L"", L"abc.1", L".7", L"6.", L"6.x"));

TEST_F(GoldMineVersionTest, AVersionThatIsNotAnsweredIsAnError) {
    FailMacro(L"&amp;Version");
    EXPECT_FALSE(version.CheckGoldMineVersion(versionOK));
    EXPECT_FALSE(versionOK);
    EXPECT_EQ(boxes.Take(),
              ShownBoxes{Notice(L"Error retrieving GoldMine version.", BoxIcon::Exclamation)});
    EXPECT_EQ(status.lines, Lines{L"Error retrieving GoldMine version."});
}

TEST_F(GoldMineVersionTest, AnOldGoldMineEndsStartUp) {
    form.GoldMineVersionOK = false;
    EXPECT_FALSE(version.ApplyGoldMineVersion());
    EXPECT_EQ(status.lines, Lines{L"Corvane requires GoldMine 6.7 or later. Exiting."});
    EXPECT_EQ(boxes.Take(),
              ShownBoxes{Notice(L"Corvane requires GoldMine 6.7 or later. Exiting.")});
    EXPECT_EQ(goldMine.commands, Lines{});
}

TEST_F(GoldMineVersionTest, AGoldMineIsMetOnceAndAskedAgainUntilThen) {
    form.GoldMineVersionOK = true;
    FailMacro(L"&amp;Version");
    EXPECT_FALSE(version.Meet());
    EXPECT_TRUE(form.GoldMineVersionOK) << "nothing is known of it";
    EXPECT_EQ(boxes.Take().size(), 1U);

    AnswerMacro(L"&amp;Version", L"6.5");
    EXPECT_FALSE(version.Meet());
    EXPECT_FALSE(form.GoldMineVersionOK);
    EXPECT_EQ(boxes.Take().size(), 1U);

    AnswerMacro(L"&amp;Version", L"2014.1");
    AnswerMacro(L"&amp;ProgramDataDir", L"C:\\GM\\");
    AnswerMacro(L"&amp;UserName", L"ANN");
    files.files[L"C:\\GM\\ANN.INI"];
    files.files[L"C:\\GM\\GM.INI"];
    auto& userIni = iniFiles.files[L"C:\\GM\\ANN.INI"];
    userIni[{L"Modem", L"DeviceID"}] = L"0";
    userIni[{L"Modem", L"DDEDial"}] = L"&Dial,, %s";
    userIni[{L"Modem", L"TAPITranslation"}] = L"0";
    EXPECT_TRUE(version.Meet());
    EXPECT_TRUE(form.GoldMineVersionOK);
    EXPECT_EQ(form.GoldMineUserName, L"ANN");

    goldMine.commands.clear();
    EXPECT_TRUE(version.Meet());
    EXPECT_EQ(goldMine.commands, Lines{});
}

TEST_F(GoldMineVersionTest, ARecentGoldMineEnablesItsFeaturesAndSetsUpDialing) {
    form.chkGlobalEnable.setChecked(true);
    form.chkCreateHistory.setChecked(true);
    RunAllEnablingRules(form);
    EXPECT_FALSE(form.optPhone123.enabled());
    EXPECT_FALSE(form.chkAutoOpenHistory.enabled());

    form.GoldMineVersionOK = true;
    FailMacro(L"&amp;ProgramDataDir");
    FailMacro(L"&amp;SysDir");
    EXPECT_FALSE(version.ApplyGoldMineVersion());

    EXPECT_TRUE(form.optPhone123.enabled());
    EXPECT_TRUE(form.chkAutoOpenHistory.enabled());
    EXPECT_EQ(boxes.Take(), ShownBoxes{Notice(L"Could not retrieve ProgramDataDir or SysDir",
                                              BoxIcon::Exclamation)});
}

TEST_F(GoldMineVersionTest, TheResultIsThatOfTheDialingSetUp) {
    form.GoldMineVersionOK = true;
    AnswerMacro(L"&amp;ProgramDataDir", L"C:\\GM\\");
    AnswerMacro(L"&amp;UserName", L"ANN");
    form.txtAppPath.setText(L"C:\\x.exe");
    files.files = {{L"C:\\GM\\ANN.INI", L""}, {L"C:\\GM\\GM.INI", L""}};
    auto& userIni = iniFiles.files[L"C:\\GM\\ANN.INI"];
    userIni[{L"Modem", L"DeviceID"}] = L"0";
    userIni[{L"Modem", L"DDEDial"}] = L"&Dial,,C:\\x.exe %s";
    userIni[{L"Modem", L"TAPITranslation"}] = L"0";
    EXPECT_TRUE(version.ApplyGoldMineVersion());
}

}  // namespace
}  // namespace corvane::test
