#include "EndToEndTest.h"

namespace end_to_end {

namespace {

// What stands in the window's parameter boxes.
struct Parameters {
    std::string notification{};
    std::string callerId{};
    std::string digits{};
    std::string formatted{};
    std::string callType{};
    std::string identifier{};
    std::string outbound{};

    bool operator==(const Parameters&) const = default;
};

void PrintTo(const Parameters& parameters, std::ostream* stream) {
    *stream << "N=" << parameters.notification << " C=" << parameters.callerId
            << " digits=" << parameters.digits << " formatted=" << parameters.formatted
            << " T=" << parameters.callType << " I=" << parameters.identifier
            << " outbound=" << parameters.outbound;
}

Parameters ReadParameters(HWND window) {
    return {.notification = ControlText(window, "txtNotifType"),
            .callerId = ControlText(window, "txtCallerID"),
            .digits = ControlText(window, "txtCallerIDDigits"),
            .formatted = ControlText(window, "txtCallerIDFormatted"),
            .callType = ControlText(window, "txtCallType"),
            .identifier = ControlText(window, "txtCallIdentifier"),
            .outbound = ControlText(window, "txtOutboundPhone")};
}

struct CommandLineCase {
    const char* name;
    std::string commandLine;
    Parameters parameters;
    Lines reports{};  // of parameters, with their brackets
};

const std::string longIdentifier(3'950, '7');

// With the master switch off and the form shown, the window shows what became of the command line.
class CommandLineTest : public EndToEndTest, public testing::WithParamInterface<CommandLineCase> {};

TEST_P(CommandLineTest, FillsTheParameterBoxes) {
    const CommandLineCase& each = GetParam();
    CloseGoldMine();
    SetAll({{"chkGlobalEnable", "0"}, {"chkAlwaysShowForm", "1"}, {"chkIgnoreShortCallerID", "0"}});

    ProgramRun run = Start(each.commandLine);
    const HWND window = run.WaitForWindow();
    const Parameters shown = ReadParameters(window);
    const bool buttonEnabled = ControlEnabled(window, "cmdProcessCall");
    PostMessageW(window, WM_CLOSE, 0, 0);
    const Outcome outcome = Finish(run);

    EXPECT_EQ(shown, each.parameters);
    EXPECT_FALSE(buttonEnabled);
    Lines log = RunLog(each.commandLine, each.parameters.identifier, {disabledLine});
    log.insert(log.begin() + 2, each.reports.begin(), each.reports.end());
    Check(outcome, {.log = log, .window = true});
}

INSTANTIATE_TEST_SUITE_P(
    CommandLines, CommandLineTest,
    testing::Values(
        CommandLineCase{"FourSwitches",
                        "/N:S /C:5551234567 /T:I /I:00042",
                        {.notification = "S",
                         .callerId = "5551234567",
                         .digits = "5551234567",
                         .formatted = "(555)123-4567",
                         .callType = "I",
                         .identifier = "00042"}},
        CommandLineCase{"AnyOrder",
                        "/I:7 /T:O /C:5551234567 /N:E",
                        {.notification = "E",
                         .callerId = "5551234567",
                         .digits = "5551234567",
                         .formatted = "(555)123-4567",
                         .callType = "O",
                         .identifier = "7"}},
        CommandLineCase{"AnySeparator",
                        "/N=S /TxI /I-5",
                        {.notification = "S", .callType = "I", .identifier = "5"}},
        CommandLineCase{"TheLaterOfTwoCounts",
                        "/N:S /N:C /T:I /T:O /I:1 /I:2",
                        {.notification = "C", .callType = "O", .identifier = "2"}},
        CommandLineCase{"MissingSwitchesLeaveTheirBoxesEmpty",
                        "/N:E /I:9",
                        {.notification = "E", .identifier = "9"}},
        CommandLineCase{"ShortTokensGiveEmptyValues", "/N /T: /I:3", {.identifier = "3"}},
        CommandLineCase{"SeveralBlanksCountAsOne",
                        "/N:S    /T:I   /I:8",
                        {.notification = "S", .callType = "I", .identifier = "8"}},
        CommandLineCase{"ANumberFromGoldMine", "5551234", {.outbound = "5551234"}},
        CommandLineCase{
            "ANumberFromGoldMineArrivesWhole", "(555) 123-4567", {.outbound = "(555) 123-4567"}},
        CommandLineCase{"WithoutSlashQuotesStay", "\"555  1234\"", {.outbound = "\"555  1234\""}},
        CommandLineCase{"ASwitchAloneIsANumberToDial", "/N:S", {.outbound = "/N:S"}},
        CommandLineCase{
            "WithASlashQuotesVanishFromANumber", "\"5551234/2\"", {.outbound = "5551234/2"}},
        CommandLineCase{"ATabIsNoBlank", "/N:S\t/I:5", {.outbound = "/N:S\t/I:5"}},
        CommandLineCase{
            "LowerCaseSwitchesAreNotRecognised",
            "/n:S /i:5 /T:I",
            {.callType = "I"},
            {"[]: Unrecognized parameter #0: /n:S.", "[]: Unrecognized parameter #1: /i:5."}},
        CommandLineCase{"ValuesKeepTheirCase",
                        "/N:s /T:i /I:aB",
                        {.notification = "s", .callType = "i", .identifier = "aB"}},
        CommandLineCase{
            "UnknownSwitchesAreReportedByTheirPlace",
            "/N:S /X:1 /I:4 what /T:I",
            {.notification = "S", .callType = "I", .identifier = "4"},
            {"[]: Unrecognized parameter #1: /X:1.", "[4]: Unrecognized parameter #3: what."}},
        CommandLineCase{"ABlankInQuotesSplitsTheValue",
                        "/N:S \"/C:555 1234567\" /I:6",
                        {.notification = "S",
                         .callerId = "555",
                         .digits = "555",
                         .formatted = "()-555",
                         .identifier = "6"},
                        {"[]: Unrecognized parameter #2: 1234567."}},
        CommandLineCase{"FourThousandCharacters",
                        "/N:S /C:5551234567 /T:I /I:" + longIdentifier,
                        {.notification = "S",
                         .callerId = "5551234567",
                         .digits = "5551234567",
                         .formatted = "(555)123-4567",
                         .callType = "I",
                         .identifier = longIdentifier}},
        CommandLineCase{"LettersOutsideASCII",
                        "/N:S /C:5551234567 /T:I /I:Zo\u00eb",
                        {.notification = "S",
                         .callerId = "5551234567",
                         .digits = "5551234567",
                         .formatted = "(555)123-4567",
                         .callType = "I",
                         .identifier = "Zo\u00eb"}}),
    NameOf);

class CommandLineEchoTest : public EndToEndTest {};

TEST_F(CommandLineEchoTest, TheEchoHasTheCommandLineWithoutItsOuterBlanks) {
    CloseGoldMine();

    const Outcome run = Run("   /N:S  /I:\"4 2\"   ");

    Lines log =
        RunLog("/N:S  /I:\"4 2\"", "4",
               {"Unrecognized parameter #2: 2.", "GoldMine not running, so version unknown.",
                "Parameters found but GoldMine not running. Exiting."});
    Check(run, {.log = log});
}

TEST_F(CommandLineEchoTest, CharactersThatTheLogsCodePageLacksAreReplaced) {
    CloseGoldMine();

    const Outcome run = Run("/N:S /T:\u65e5 /I:5");

    Lines log = RunLog("/N:S /T:? /I:5", "5",
                       {"GoldMine not running, so version unknown.",
                        "Parameters found but GoldMine not running. Exiting."});
    Check(run, {.log = log});
}

TEST_F(CommandLineEchoTest, OnlyBlanksAreNoParameters) {
    CloseGoldMine();

    ProgramRun run = Start("     ");
    PostMessageW(run.WaitForWindow(), WM_CLOSE, 0, 0);

    Check(Finish(run), {.log = RunLog("", "",
                                      {"GoldMine not running, so version unknown.",
                                       "Program was started without params. Process Call button "
                                       "disabled."}),
                        .window = true});
}

TEST_F(CommandLineEchoTest, UnrecognisedParametersReachALogThatIsOff) {
    CloseGoldMine();
    Set("chkWriteLog", "0");

    const Outcome run = Run("/N:S /X:1 /I:7 /Y:2");

    Check(run, {.log = {"[]: Unrecognized parameter #1: /X:1.",
                        "[7]: Unrecognized parameter #3: /Y:2."}});
}

TEST_F(CommandLineEchoTest, AfterARejectedCallerIdTheyReachOnlyALogThatIsOn) {
    CloseGoldMine();
    Set("chkWriteLog", "0");

    const Outcome run = Run("/A:1 /C:anonymous /B:2 /C:5551234567 /D:3");

    Check(run, {.log = {"[]: Unrecognized parameter #0: /A:1.",
                        "[]: Unrecognized parameter #4: /D:3."}});
}

struct Rejection {
    const char* name;
    std::string commandLine;
    Lines messages;  // with their brackets
};

class RejectedCallerIdTest : public EndToEndTest, public testing::WithParamInterface<Rejection> {};

TEST_P(RejectedCallerIdTest, EndsTheRunWithoutAskingGoldMine) {
    const Rejection& each = GetParam();
    GoldMine();

    const Outcome run = Run(each.commandLine);

    Lines log = RunLog(each.commandLine, "3", {});
    log.insert(log.begin() + 2, each.messages.begin(), each.messages.end());
    Check(run, {.log = log});
}

INSTANTIATE_TEST_SUITE_P(
    CallerIds, RejectedCallerIdTest,
    testing::Values(
        Rejection{"Letters",
                  "/N:S /C:anonymous /T:I /I:3",
                  {"[]: Ignored non-numeric CallerID: anonymous."}},
        Rejection{"Empty", "/N:S /C: /T:I /I:3", {"[]: Ignored non-numeric CallerID: ."}},
        Rejection{"NoValue", "/I:3 /C", {"[3]: Ignored non-numeric CallerID: ."}},
        Rejection{"Extension", "/I:3 /N:S /C:12345 /T:I", {"[3]: Ignored short CallerID: 12345."}},
        Rejection{"DialCharactersAreNoDigits",
                  "/I:3 /C:*#*#*#*# /T:I",
                  {"[3]: Ignored non-numeric CallerID: *#*#*#*#."}},
        Rejection{"OnlyDigitsCount", "/I:3 /C:ext.1-2-3", {"[3]: Ignored short CallerID: 123."}},
        Rejection{
            "LaterUnrecognisedParametersAreStillReported",
            "/I:3 /C:none /X:1",
            {"[3]: Ignored non-numeric CallerID: none.", "[3]: Unrecognized parameter #2: /X:1."}}),
    NameOf);

}  // namespace
}  // namespace end_to_end
