// What CorvaneCheck tells of the runs of the program that the log holds: each outcome once.

#include <cctype>
#include <functional>

#include "CheckTest.h"
#include "support/windows/Files.h"

// For itself: its short names would be in the way of other tests.
namespace end_to_end::check_calls {
namespace {

using Options = std::map<std::string, std::string>;

const std::string ringing = "/N:S /C:5551234567 /T:I /I:00042";
const std::string answered = "/N:C /C:5551234567 /T:I /I:00042";

const Options pop = {{"chkCreateHistory", "0"}};
const Options history = {{"chkPopOnInboundCall", "0"},
                         {"optOpenHistoryBeforeSaving", "False"},
                         {"optOpenHistoryAfterSaving", "True"}};
const Options dialog = {{"chkPopOnInboundCall", "0"}};

Options With(Options options, const Options& more) {
    for (const auto& [name, text] : more)
        options[name] = text;
    return options;
}

const Options link = With(history, {{"chkCreateLink", "1"},
                                    {"chkDelayAddingLink", "0"},
                                    {"chkConfirmLinkCallIdentifier", "1"},
                                    {"txtLinkedItemPath", "C:\\corvane-e2e\\recordings"}});

void Record(const std::string& name, long long secondsOld) {
    const std::wstring file = recordingsFolder + Wide(name);
    WriteFileText(file, "sound");
    AgeFile(file, secondsOld);
}

// Single blanks, and "<s>" for a number of seconds.
std::string Normalised(const std::string& text) {
    std::string words;
    for (const char each : text) {
        if (each != ' ' || (!words.empty() && words.back() != ' '))
            words += each;
    }
    for (size_t at = words.find(" s"); at != std::string::npos; at = words.find(" s", at + 2)) {
        const size_t begin = words.find_last_not_of("0123456789.", at - 1) + 1;
        const bool isUnit =
            at + 2 == words.size() || !std::isalpha(static_cast<unsigned char>(words[at + 2]));
        if (begin < at && isUnit)
            words.replace(begin, at - begin, "<>");
    }
    return words;
}

// The rows of events, without their times and the name of the column.
Lines RowsOf(const std::string& text) {
    Lines rows;
    for (const std::string& line : SplitLines(text, "\n")) {
        constexpr size_t timeWidth = 21;
        if (line.starts_with("20"))
            rows.push_back(Normalised(line.substr(timeWidth)));
    }
    return rows;
}

struct CheckedCall {
    const char* name;
    std::string commandLine;
    Options options;
    std::string row;
    std::string faults{};
    std::function<void()> setUp{};
    std::string goldMine{};  // its options; "none" when it does not run
};

class CheckCallsTest : public CheckTest {
protected:
    void SetUp() override {
        CheckTest::SetUp();
        Set("txtCOMDurationSeconds", "1");
        Set("chkLogCOMCalls", "0");
    }
};

class CheckCallsOutcomeTest : public CheckCallsTest,
                              public testing::WithParamInterface<CheckedCall> {};

TEST_P(CheckCallsOutcomeTest, IsARowOfItsOwn) {
    const CheckedCall& each = GetParam();
    CloseGoldMine();  // a contact of an earlier call would be the current one
    if (each.goldMine != "none")
        GoldMine(each.goldMine).SetFaults(each.faults);
    GoldMineIsSpoilt();
    SetAll(each.options);
    if (each.setUp)
        each.setUp();

    Run(each.commandLine);

    const Checked checked = Check("calls");
    EXPECT_EQ(checked.exitCode, 0U);
    EXPECT_EQ(RowsOf(checked.text), Lines{each.row}) << checked.text;
    EXPECT_NE(checked.text.find("\n1 call with 1 event, "), std::string::npos) << checked.text;
}

INSTANTIATE_TEST_SUITE_P(
    Outcomes, CheckCallsOutcomeTest,
    testing::Values(
        CheckedCall{"Popped", ringing, pop,
                    "00042 ringing in 5551234567 <> s popped in a primary contact record"},
        CheckedCall{"PoppedInTheOpenRecord",
                    ringing,
                    pop,
                    "00042 ringing in 5551234567 <> s popped in Phone1 of the current record",
                    {},
                    {},
                    "/Record:A0002"},
        CheckedCall{"NotFound", "/N:S /C:5550000000 /T:I /I:00042", pop,
                    "00042 ringing in 5550000000 not found"},
        CheckedCall{"TooShort", "/N:S /C:123 /T:I /I:00042", pop,
                    "00042 ringing in 123 ignored: caller ID too short"},
        CheckedCall{
            "NotTheMoment", answered, pop,
            "00042 answered in 5551234567 ignored: search is set to ringing, history is set to "
            "never"},
        CheckedCall{"SwitchedOff",
                    ringing,
                    {{"chkGlobalEnable", "0"}},
                    "00042 ringing in 5551234567 ignored: master switch is off"},
        CheckedCall{"Dialed", "(555) 123-4567", {}, "dial (555) 123-4567 dialed 5551234567"},
        CheckedCall{"NoDigitsToDial",
                    "home",
                    {},
                    "dial home trouble: no digits to dial; box: <> s at most"},
        CheckedCall{"HistoryWithLink",
                    answered,
                    link,
                    "00042 answered in 5551234567 found in a primary contact record; link to "
                    "call(00042).wav; history created; history item opened",
                    {},
                    [] { Record("call(00042).wav", 1); }},
        CheckedCall{
            "RecordingOfAnotherCall",
            answered,
            link,
            "00042 answered in 5551234567 found in a primary contact record; no link: newest "
            "recording is of another call; history created; history item opened",
            {},
            [] { Record("call(00041).wav", 1); }},
        CheckedCall{
            "RecordingTooOld",
            answered,
            link,
            "00042 answered in 5551234567 found in a primary contact record; no link: newest "
            "recording is too old; history created; history item opened",
            {},
            [] { Record("call(00042).wav", 90000); }},
        CheckedCall{
            "HistoryRefused", answered, history,
            "00042 answered in 5551234567 trouble: found in a primary contact record; history not "
            "created; box: <> s at most",
            "InsHist value 0\n"},
        CheckedCall{
            "DialogFilledIn", answered, dialog,
            "00042 answered in 5551234567 found in a primary contact record; Complete Call filled "
            "in"},
        CheckedCall{
            "DialogThatNeverComes", answered, dialog,
            "00042 answered in 5551234567 trouble: found in a primary contact record; Complete "
            "Call did not come up",
            "MenuCommand event never\n"},
        CheckedCall{
            "SlowCommand", ringing, With(pop, {{"chkLogCOMCalls", "1"}}),
            "00042 ringing in 5551234567 <> s popped in a primary contact record; slowest command: "
            "CallerID <> s",
            "CallerID delay 2500\n"},
        CheckedCall{
            "QueryRefused", "/N:S /C:5550000000 /T:I /I:00042",
            With(pop, {{"chkSearchInAddlContacts", "1"}}),
            "00042 ringing in 5550000000 trouble: GoldMine refused a query; not found; box: <> s "
            "at "
            "most",
            "DataStream status 0\n"},
        CheckedCall{"NoGoldMine",
                    ringing,
                    pop,
                    "00042 ringing in 5551234567 trouble: GoldMine was not running",
                    {},
                    {},
                    "none"},
        CheckedCall{
            "NotLoggedIn", ringing, pop,
            "00042 ringing in 5551234567 trouble: not logged in to GoldMine; GoldMine told no "
            "version; box: <> s at most",
            "Macro:&Version access-denied\n"},
        CheckedCall{
            "SettingThatDoesNotConvert",
            ringing,
            {{"chkCreateHistory", "maybe"}},
            "start trouble: run-time error '13': LoadSettings: chkCreateHistory: Type mismatch; "
            "box: <> s at most"}),
    NameOf);

TEST_F(CheckCallsTest, ARunThatWaitsInABoxDidNotEnd) {
    GoldMine().SetFaults("Macro:&Version access-denied\n");
    ProgramRun program = Start(ringing);
    program.Answer("OK");

    const Checked checked = Check("calls");
    program.Finish();

    EXPECT_EQ(
        RowsOf(checked.text),
        Lines{"00042 ringing in 5551234567 trouble: not logged in to GoldMine; did not end: "
              "waits in a box or for GoldMine, or was ended from outside; box: <> s at most"});
}

TEST_F(CheckCallsTest, EventsOfACallStandTogetherInTableAndPage) {
    CloseGoldMine();
    GoldMine();
    GoldMineIsSpoilt();
    SetAll({{"optProcessConnect", "False"}, {"optProcessEnd", "True"}});
    Run(ringing);
    std::string log = ReadFileText(logFile()).value_or("");
    Run("/N:E /C:5551234567 /T:I /I:00042");
    log += ReadFileText(logFile()).value_or("");
    WriteFileText(logFile(), log);

    EXPECT_EQ(
        RowsOf(Check("calls --call 42").text),
        (Lines{"00042 ringing in 5551234567 <> s popped in a primary contact record",
               "00042 ended in 5551234567 found in Phone1 of the current record; Complete Call "
               "filled in"}));
    EXPECT_EQ(Check("calls --call 43").text, "no calls\n");

    const std::wstring page = std::wstring(dataFolder) + L"calls.html";
    EXPECT_EQ(Check("calls --html " + Utf8(page)).text, "Wrote " + Utf8(page) + ".\n");
    const std::string html = ReadFileText(page).value_or("");
    EXPECT_NE(html.find("rowspan=\"2\">00042</th>"), std::string::npos);
    EXPECT_NE(html.find("popped in a primary contact record</td>"), std::string::npos);
    EXPECT_TRUE(html.ends_with("</html>\n"));
}

TEST_F(CheckCallsTest, WithoutALogItSaysWhy) {
    const Checked checked = Check("calls");
    EXPECT_EQ(checked.exitCode, 3U);
    EXPECT_NE(checked.text.find("Could not open " + Utf8(logFile()) + ": "), std::string::npos)
        << checked.text;
}

}  // namespace
}  // namespace end_to_end::check_calls
