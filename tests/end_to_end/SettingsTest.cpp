#include "EndToEndTest.h"

namespace end_to_end {
namespace {

struct BadText {
    const char* name;
    std::string option;
    std::string text;
    std::string number = "13";
    std::string error = "Type mismatch";
};

class SettingsTest : public EndToEndTest {};

TEST_F(SettingsTest, AFirstRunLeavesAKeyWithoutOptions) {
    CloseGoldMine();
    RegDeleteTreeW(HKEY_CURRENT_USER, ownKey);

    const Outcome run = Run("/N:S /I:1");

    Check(run, {});  // the log is off by default
    EXPECT_EQ(OwnValues(), (std::map<std::string, std::string>{{"LastVersionRun", "1.0.0.1"},
                                                               {"PreviousStatus", "0"}}));
}

TEST_F(SettingsTest, WithoutStoredOptionsTheDefaultsAreInForce) {
    GoldMine();
    RegDeleteTreeW(HKEY_CURRENT_USER, ownKey);

    const Outcome run = Run("/N:S /C:15551234567 /T:I /I:1");

    Check(run, {.commands = Joined({startUpCommands,
                                    phoneCommands,
                                    {gmapi::CallerID("(555)123-4567", "1", "1"),
                                     gmapi::StatusMsg("Corvane found (555)123-4567 in a primary "
                                                      "contact record.")}})});
}

TEST_F(SettingsTest, LettersOfAnyCaseAndNumbersAreTruthValues) {
    GoldMine();
    SetAll({{"optPhone1Only", " 1 "},
            {"optPhone123", "false"},
            {"optPopCurrentWindow", "TRUE"},
            {"optPopNewWindow", "0"},
            {"chkCreateHistory", " 0 "}});
    GoldMineIsSpoilt();

    const Outcome run = Run("/N:S /C:5551234567 /T:I /I:1");

    EXPECT_EQ(
        run.commands,
        Joined({startUpCommands,
                {gmapi::Macro("&amp;Phone1"), gmapi::CallerID("(555)123-4567", "2", "0"),
                 gmapi::StatusMsg("Corvane found (555)123-4567 in a primary contact record.")}}));
    EXPECT_EQ(run.boxes, Boxes{});
}

class BadSettingTest : public EndToEndTest, public testing::WithParamInterface<BadText> {};

TEST_P(BadSettingTest, StopsTheStartAndResetsTheRunNumber) {
    const BadText& each = GetParam();
    GoldMine();
    Set(each.option, each.text);
    // No run number is taken before the log's own option is read, and the log is off then.
    const bool logKnown = each.option != "chkWriteLog";
    ExpectRunNumber(logKnown ? "17" : "0");

    const Outcome run = Run("/N:S /C:5551234567 /T:I /I:1");

    Lines log = {"[]: Run-time error '" + each.number + "':  " +
                 (logKnown ? "LoadSettings: " : "SetUpLog: ") + each.option + ": " + each.error};
    if (logKnown) {
        log = {"[]: " + std::string(68, '-') + " <date>", log[0],
               "[]: Finished unloading form and closing program."};
    }
    Check(run,
          {.log = log, .boxes = {{"Error loading configuration. Exiting.", "OK", "critical"}}});
    EXPECT_EQ(OwnValue("PreviousStatus"), "0");
    EXPECT_EQ(OwnValue(each.option), each.text);
}

INSTANTIATE_TEST_SUITE_P(StoredTexts, BadSettingTest,
                         testing::Values(BadText{"CheckWord", "chkCreateHistory", "yes"},
                                         BadText{"CheckEmpty", "chkGlobalEnable", ""},
                                         BadText{"CheckBlank", "chkFillInRef", "   "},
                                         BadText{"CheckBeyondAnInteger", "chkAutoProcess", "40000",
                                                 "6", "Overflow"},
                                         BadText{"CheckOfTheLog", "chkWriteLog", "on"},
                                         BadText{"CheckOfTheLogEmpty", "chkWriteLog", ""},
                                         BadText{"TheLastCheck", "chkLogCOMCalls", "x"},
                                         BadText{"ChoiceWord", "optPhone123", "maybe"},
                                         BadText{"ChoiceEmpty", "optProcessEnd", ""},
                                         BadText{"ChoiceBlank", "optPopNewWindow", " "}),
                         NameOf);

}  // namespace
}  // namespace end_to_end
