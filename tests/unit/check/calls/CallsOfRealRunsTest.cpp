// The log that the program itself writes, told as calls: a message that is worded anew, and not
// understood any more, fails here.

#include <gtest/gtest.h>

#include <fstream>
#include <map>

#include "CallLogFixture.h"
#include "check/calls/LogMessage.h"
#include "check/calls/LogReader.h"
#include "check/report/EndOfLog.h"
#include "check/report/Masking.h"
#include "unit/PlayedGoldMine.h"
#include "unit/ProgramFixture.h"

namespace corvane {
namespace {

using test::FakeSurroundings;
using test::PlayedGoldMine;
using Options = std::map<std::wstring, std::wstring>;

const std::wstring ringing = L"/N:S /C:5551234 /T:I /I:7";
const std::wstring connected = L"/N:C /C:5551234 /T:I /I:7";

struct RealRun {
    std::string name;
    std::wstring arguments;
    Options options;
    std::wstring row;
    std::function<void(FakeSurroundings&, PlayedGoldMine&)> setUp = {};
};

void CallersRecordIsOpen(FakeSurroundings&, PlayedGoldMine& goldMine) {
    goldMine.macros[L"&Phone1"] = L"5551234";
}

void WithRecording(FakeSurroundings& around, PlayedGoldMine& goldMine) {
    CallersRecordIsOpen(around, goldMine);
    around.files.folders.insert(L"R:\\rec");
    around.files.newest = {L"call (7).wav", around.clock.day + 0.5, 3};
}

const Options pop{{L"chkPopOnInboundCall", L"1"}, {L"chkCreateHistory", L"0"}};
const Options save{
    {L"chkPopOnInboundCall", L"0"},          {L"chkCreateHistory", L"1"},
    {L"chkAutoOpenHistory", L"1"},           {L"optOpenHistoryBeforeSaving", L"False"},
    {L"optOpenHistoryAfterSaving", L"True"}, {L"chkCreateLink", L"1"},
    {L"txtLinkedItemPath", L"R:\\rec"}};
const Options confirmed = [] {
    Options options = save;
    options[L"chkConfirmLinkCallIdentifier"] = L"1";
    return options;
}();
const Options dialog{{L"chkPopOnInboundCall", L"0"},
                     {L"chkCreateHistory", L"1"},
                     {L"chkAutoOpenHistory", L"1"},
                     {L"optOpenHistoryBeforeSaving", L"True"},
                     {L"chkCreateLink", L"0"}};

const std::vector<RealRun> realRuns = {
    {"PoppedInOpenRecord", ringing, pop,
     L"7 ringing in 5551234 popped: popped in Phone1 of the current record", CallersRecordIsOpen},
    {"PoppedBySearch", ringing, pop,
     L"7 ringing in 5551234 popped: popped in a primary contact record",
     [](auto&, auto& goldMine) { goldMine.phones = {L"5551234"}; }},
    {"NotFound", ringing, pop, L"7 ringing in 5551234 not found: not found"},
    {"Short", L"/N:S /C:12 /T:I /I:7", pop,
     L"7 ringing in 12 ignored: ignored: caller ID too short"},
    {"NoDigits", L"/N:S /C:anonymous /T:I /I:7", pop,
     L"7 ringing in anonymous ignored: ignored: no digits in the caller ID"},
    {"SwitchedOff",
     ringing,
     {{L"chkGlobalEnable", L"0"}},
     L"7 ringing in 5551234 ignored: ignored: master switch is off"},
    {"NotTheMoment", connected, pop,
     L"7 answered in 5551234 ignored: ignored: search is set to ringing, history is set to never"},
    {"Dialed", L"(555) 010-0199", {}, L" dial  (555) 010-0199 dialed: dialed 5550100199"},
    {"NoDigitsToDial", L"home", {}, L" dial  home trouble: no digits to dial"},
    {"HistoryWithLink", connected, save,
     L"7 answered in 5551234 found: found in Phone1 of the current record; link to call (7).wav; "
     L"history created; history item opened",
     WithRecording},
    {"NoRecording", connected, save,
     L"7 answered in 5551234 found: found in Phone1 of the current record; no link: no recording "
     L"there; history created; history item opened",
     [](auto& around, auto& goldMine) {
         WithRecording(around, goldMine);
         around.files.newest = {};
     }},
    {"NoRecordingsFolder", connected, save,
     L"7 answered in 5551234 trouble: found in Phone1 of the current record; no link: recordings "
     L"folder not there; history created; history item opened",
     CallersRecordIsOpen},
    {"OldRecording", connected, save,
     L"7 answered in 5551234 found: found in Phone1 of the current record; no link: newest "
     L"recording "
     L"is too old; history created; history item opened",
     [](auto& around, auto& goldMine) {
         WithRecording(around, goldMine);
         around.files.newest.modified -= 1;
     }},
    {"AnothersRecording", connected, confirmed,
     L"7 answered in 5551234 found: found in Phone1 of the current record; no link: newest "
     L"recording "
     L"is of another call; history created; history item opened",
     [](auto& around, auto& goldMine) {
         WithRecording(around, goldMine);
         around.files.newest.name = L"call (8).wav";
     }},
    {"Dialog", connected, dialog,
     L"7 answered in 5551234 found: found in Phone1 of the current record; Complete Call filled in",
     CallersRecordIsOpen},
    {"NoDialog", connected, dialog,
     L"7 answered in 5551234 trouble: found in Phone1 of the current record; Complete Call did not "
     L"come up",
     [](auto& around, auto& goldMine) {
         CallersRecordIsOpen(around, goldMine);
         goldMine.dialogInCommand = false;
     }},
    {"NoGoldMine", ringing, pop, L"7 ringing in 5551234 trouble: GoldMine was not running",
     [](auto& around, auto&) { around.processes = {}; }},
    {"NotRegistered", ringing, pop,
     L"7 ringing in 5551234 trouble: could not connect to GoldMine; GoldMine told no version",
     [](auto& around, auto&) {
         around.goldMine.connectError = MakeRuntimeError(ErrorNumber::CannotCreateObject);
     }},
    {"NotLoggedIn", ringing, pop,
     L"7 ringing in 5551234 trouble: not logged in to GoldMine; GoldMine told no version",
     [](auto& around, auto&) {
         around.goldMine.sendError = MakeRuntimeError(ErrorNumber::PermissionDenied);
     }},
    {"OldGoldMine", ringing, pop, L"7 ringing in 5551234 trouble: GoldMine is too old",
     [](auto&, auto& goldMine) { goldMine.macros[L"&Version"] = L"6.5"; }},
    {"SettingThatDoesNotConvert",
     ringing,
     {{L"chkCreateHistory", L"maybe"}},
     L" start   trouble: run-time error '13':  LoadSettings: chkCreateHistory: Type mismatch"},
};

// Masked, the log tells the same of a call but who it was.
void ExpectTheSameMasked(const std::string& bytes, const CallLog& calls) {
    FakeLogFiles files;
    files.files[L"the.log"] = bytes;
    Masking masking;
    EndOfLog masked(files, L"the.log", bytes.size(), &masking);
    const CallLog told = ReadCallLog(files, masked, {}, 100);
    ASSERT_EQ(told.calls.size(), calls.calls.size());
    for (std::size_t i = 0; i < told.calls.size(); ++i) {
        const auto& events = calls.calls[i].events;
        const auto& others = told.calls[i].events;
        ASSERT_EQ(others.size(), events.size());
        for (std::size_t j = 0; j < others.size(); ++j) {
            EXPECT_EQ(others[j].outcome, events[j].outcome);
            EXPECT_EQ(others[j].steps.size(), events[j].steps.size());
            EXPECT_EQ(others[j].what, events[j].what);
            EXPECT_EQ(others[j].identifier, events[j].identifier);
            EXPECT_EQ(others[j].timeToPop, events[j].timeToPop);
            EXPECT_TRUE(events[j].number.empty() || others[j].number != events[j].number);
        }
    }

    EndOfLog again(files, L"the.log", bytes.size(), &masking);
    LogReader reader(again);
    while (const auto line = reader.Next()) {
        for (const char* mark : {"(hidden", "5551234", "010-0199", "5550100199", "anonymous"})
            EXPECT_EQ(line->find(mark), std::string_view::npos) << *line;
    }
}

class CallsOfRealRunsTest : public testing::TestWithParam<RealRun> {};

TEST_P(CallsOfRealRunsTest, AreToldAsTheyWere) {
    const RealRun& run = GetParam();
    FakeSurroundings around;
    PlayedGoldMine goldMine;
    around.InstallThreeCX();
    around.RunGoldMine();
    goldMine.macros[L"&Version"] = L"2014.1";
    goldMine.macros[L"&ProgramDataDir"] = L"C:\\GM\\";
    goldMine.macros[L"&UserName"] = L"ANN";
    goldMine.macros[L"&Phone1"] = L"5550001";
    goldMine.macros[L"&Phone2"] = L"5550002";
    goldMine.macros[L"&Phone3"] = L"5550003";
    goldMine.macros[L"Contact1->AccountNo"] = L"A1";
    goldMine.onDialog = [&] {
        around.goldMine.RaiseWindowUpDown(L"DIALOGSCHEDULECOMPLETE", true,
                                          PlayedGoldMine::dialogHandle);
    };
    around.goldMine.answerAll = [&](const std::wstring& command) { return goldMine.Do(command); };
    around.StoreOption(L"chkWriteLog", L"1");
    around.StoreOption(L"chkFormatCallerID", L"0");
    for (const auto& [name, text] : run.options)
        around.StoreOption(name, text);
    if (run.setUp)
        run.setUp(around, goldMine);

    static_cast<void>(Program(around.Seams(run.arguments)).Run());
    static_cast<void>(around.boxes.Take());

    const std::wstring& log =
        around.files.files[L"C:\\ProgramData\\Halvorn Systems\\CorvaneTo3CX\\CorvaneTo3CX.log"];
    std::string bytes;
    for (const wchar_t each : log)
        bytes += static_cast<char>(each);
    const CallLog calls = ReadLog(bytes);
    EXPECT_EQ(RowsOf(calls), Rows{run.row});
    EXPECT_EQ(calls.odd.foreign + calls.odd.joined, 0U);

    ExpectTheSameMasked(bytes, calls);
}

void PrintTo(const RealRun& run, std::ostream* out) {
    *out << run.name;
}

INSTANTIATE_TEST_SUITE_P(All, CallsOfRealRunsTest, testing::ValuesIn(realRuns),
                         [](const auto& each) { return each.param.name; });

// All that the program writes beside a box when GoldMine fails.
TEST(CallsOfFailingRuns, EveryLineWithABoxIsTrouble) {
    std::ifstream matrix(FAULT_MATRIX);
    std::size_t lines = 0;
    for (std::string line; std::getline(matrix, line);) {
        constexpr std::size_t messageBegin = 9;  // behind "    [!]- "
        if (!line.starts_with("    [") || line.substr(7, 2) != "- ")
            continue;
        const LogMessage message = UnderstandMessage(line.substr(messageBegin));
        EXPECT_EQ(message.saying, Saying::trouble) << line;
        EXPECT_EQ(message.box, BoxOfLine::before) << line;
        ++lines;
    }
    EXPECT_GT(lines, 100U) << FAULT_MATRIX;
}

}  // namespace
}  // namespace corvane
