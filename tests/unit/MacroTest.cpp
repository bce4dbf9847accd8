#include "gmapi/Macro.h"

#include "GoldMineFixture.h"

namespace corvane::test {
namespace {

class MacroTest : public GoldMineFixture {};

TEST_F(MacroTest, TheNameIsEscapedAndTheStatusTextIsTheValue) {
    goldMine.answers
        [L"<GMAPI call=\"Macro\"><data name=\"Macro\">Contact1-&gt;AccountNo</data>"
         L"</GMAPI>"] =
        L"<GMAPI call=\"Macro\"><status code=\"1\">A960 &amp;amp; 'x</status></GMAPI>";
    EXPECT_EQ(macro.Value(L"Contact1->AccountNo"), L"A960 & 'x");
}

TEST_F(MacroTest, AnEmptyValueIsASuccess) {
    AnswerMacro(L"&amp;Phone1", L"");
    EXPECT_EQ(macro.Value(L"&Phone1"), L"");
}

TEST_F(MacroTest, AReplyThatBreaksOffBehindItsPrefixIsASuccess) {
    goldMine.answers[MacroCommand(L"&amp;Phone1")] = L"<GMAPI call=\"Macro\"><status code=\"1\">";
    EXPECT_EQ(macro.Value(L"&Phone1"), L"");
}

class MacroFailureTest : public MacroTest, public testing::WithParamInterface<std::wstring> {};

TEST_P(MacroFailureTest, HasNoValue) {
    goldMine.answers[MacroCommand(L"&amp;Phone1")] = GetParam();
    goldMine.answers[MacroCommand(L"&amp;SysInfo")] = GetParam();
    EXPECT_EQ(macro.Value(L"&Phone1"), std::nullopt);
    EXPECT_EQ(macro.SysInfo(L"GoldDir"), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(
    Replies, MacroFailureTest,
    testing::Values(L"", L"False", L"<GMAPI call=\"Macro\"><status code=\"0\">x</status></GMAPI>",
                    L"<GMAPI call=\"macro\"><status code=\"1\">x</status></GMAPI>"));

struct Helper {
    std::wstring command;
    std::optional<std::wstring> (*run)(Macro&);
};

class MacroHelperTest : public MacroTest, public testing::WithParamInterface<Helper> {};

TEST_P(MacroHelperTest, EvaluatesItsMacro) {
    goldMine.answers[GetParam().command] =
        L"<GMAPI call=\"Macro\"><status code=\"1\">C:\\Data\\</status></GMAPI>";
    EXPECT_EQ(GetParam().run(macro), L"C:\\Data\\");
    EXPECT_EQ(goldMine.commands, Lines{GetParam().command});
}

INSTANTIATE_TEST_SUITE_P(
    Helpers, MacroHelperTest,
    testing::Values(
        Helper{L"<GMAPI call=\"Macro\"><data name=\"Macro\">&amp;Version</data></GMAPI>",
               [](Macro& macro) { return macro.Version(); }},
        Helper{L"<GMAPI call=\"Macro\"><data name=\"Macro\">&amp;ProgramDataDir</data></GMAPI>",
               [](Macro& macro) { return macro.ProgramDataDir(); }},
        Helper{L"<GMAPI call=\"Macro\"><data name=\"Macro\">&amp;SysDir</data></GMAPI>",
               [](Macro& macro) { return macro.SysDir(); }},
        Helper{L"<GMAPI call=\"Macro\"><data name=\"Macro\">&amp;UserName</data></GMAPI>",
               [](Macro& macro) { return macro.UserName(); }}));

class SysInfoTest : public MacroTest {
protected:
    SysInfoTest() {
        goldMine
            .answers[L"<GMAPI call=\"Macro\"><data name=\"Macro\">&amp;SysInfo</data></GMAPI>"] =
            L"<GMAPI call=\"Macro\"><status code=\"1\">Success</status>"
            L"<data name=\"System Information\"><data name=\"Paths\">"
            L"<data name=\"GoldDir\">C:\\A &amp;amp; B\\</data></data>"
            L"<data name=\"User\">ANN</data></data>"
            L"<data name=\"Outside\">no</data></GMAPI>";
    }
};

TEST_F(SysInfoTest, AnItemIsFoundAtAnyDepth) {
    EXPECT_EQ(macro.SysInfo(L"User"), L"ANN");
    EXPECT_EQ(macro.SysInfo(L"GoldDir"), L"C:\\A & B\\");
}

TEST_F(SysInfoTest, AnItemThatIsNotListedIsEmptyButASuccess) {
    EXPECT_EQ(macro.SysInfo(L"Nothing"), L"");
    EXPECT_EQ(macro.SysInfo(L"Outside"), L"");
}

TEST_F(SysInfoTest, TheItemNameStandsInTheExpressionAsGiven) {
    EXPECT_EQ(macro.SysInfo(L"User\" or @name=\"x"), L"ANN");
}

}  // namespace
}  // namespace corvane::test
