#include "CheckTest.h"

namespace end_to_end {

class CheckNumberTest : public CheckTest {};

TEST_F(CheckNumberTest, BothWaysAreToldAndNothingIsDone) {
    GoldMine();
    const Lines before = State();

    const Checked checked = Check("number +1 (555) 123-4567 x12");

    EXPECT_EQ(checked.text,
              "As a caller ID\n"
              "  received     +1 (555) 123-4567 x12\n"
              "  digits       1555123456712\n"
              "  length       13, at least 6 are wanted\n"
              "  searched as  (155512)345-6712\n"
              "  asked        Phone1 of the open record\n"
              "  then         Phone2 of the open record\n"
              "  then         Phone3 of the open record\n"
              "  then         GoldMine's own look-up, which shows the contact: Phone1, Phone2 and "
              "Phone3\n"
              "\n"
              "As a number to dial\n"
              "  command line  CorvaneTo3CX.exe +1 (555) 123-4567 x12\n"
              "  digits        1555123456712\n"
              "  dialed        5123456712\n"
              "  3CX is told   \"C:\\corvane-e2e\\app\\CallTriggerCmd.exe\" -cmd "
              "makecall:5123456712\n"
              "  warning       12 looks like an extension: it is dialed as the end of the number\n"
              "  warning       155 is cut off at the front, because only the last 10 digits are "
              "dialed; it looks like a country code\n");
    EXPECT_EQ(checked.exitCode, 1u);
    EXPECT_EQ(State(), before);
    EXPECT_EQ(Commands(), Lines{});
    EXPECT_EQ(Dialled(), Lines{});
}

TEST_F(CheckNumberTest, GoldMineIsAskedByMacrosAndQueries) {
    GoldMine();
    Set("chkSearchInAddlContacts", "1");
    const Lines before = State();
    const std::string askedFor =
        "\nIn GoldMine\n"
        "  query    select AccountNo from Contact1 where Phone1 = "
        "'(555)123-4567' or Phone2 = '(555)123-4567' or Phone3 = "
        "'(555)123-4567'\n"
        "  matches  1\n"
        "  result   Found (555)123-4567 in a primary contact record.\n"
        "  note     GoldMine's own look-up shows the contact, so it was "
        "not asked; it may match more\n";

    const Checked checked = Check("number 5551234567 --ask");

    EXPECT_TRUE(checked.text.ends_with(askedFor)) << checked.text;
    EXPECT_EQ(checked.exitCode, 0u);
    EXPECT_EQ(State(), before) << "GoldMine was sent more than macros and queries";
}

TEST_F(CheckNumberTest, NobodyIsFound) {
    GoldMine();
    const Checked checked = Check("number 5550000000 --ask");
    EXPECT_NE(checked.text.find("  matches  0\n"
                                "  result   Did not find GoldMine contact for (555)000-0000. "
                                "Further call processing skipped.\n"),
              std::string::npos)
        << checked.text;
    EXPECT_EQ(checked.exitCode, 1u);
}

TEST_F(CheckNumberTest, WithoutGoldMineNoneIsStarted) {
    CloseGoldMine();
    const Checked checked = Check("number 5551234567 --ask");
    EXPECT_TRUE(
        checked.text.ends_with("\nIn GoldMine\n  GoldMine  is not running in this session\n"))
        << checked.text;
    EXPECT_EQ(checked.exitCode, 2u);
}

TEST_F(CheckNumberTest, ItEndsInTimeWhenGoldMineHangs) {
    GoldMine().SetFaults("Macro:&Phone1 delay 12000\n");
    GoldMineIsSpoilt();
    const Checked checked = Check("number 5551234567 --ask");
    EXPECT_TRUE(checked.text.ends_with("\nIn GoldMine\n  GoldMine  does not answer\n"))
        << checked.text;
    EXPECT_LT(checked.milliseconds, 10'000u);
    EXPECT_EQ(checked.exitCode, 2u);
}

}  // namespace end_to_end
