#include "EndToEndTest.h"

namespace end_to_end {
namespace {

const std::string pop = "Inbound call search for CallerID:  ";
const std::string history = "History creation:  ";
const std::string cid = "(555)123-4567";
const std::string found = "Found (555)123-4567 in a primary contact record.";
const Lines quietSearch = Joined({phoneCommands, {gmapi::CallerID(cid, "1", "1")}});
const Lines toldSearch = Joined(
    {quietSearch, {gmapi::StatusMsg("Corvane found (555)123-4567 in a primary contact record.")}});

const std::map<std::string, std::string> searchWhenAnswered = {
    {"optPopOnInboundCallStart", "False"}, {"optPopOnInboundCallConnect", "True"}};
const std::map<std::string, std::string> noSearch = {{"chkPopOnInboundCall", "0"}};

std::map<std::string, std::string> HistoryAt(const std::string& option,
                                             std::map<std::string, std::string> options = {}) {
    options.insert({{"optProcessStart", "False"},
                    {"optProcessConnect", "False"},
                    {"optProcessEnd", "False"},
                    {"chkAutoOpenHistory", "0"}});
    options[option] = "True";
    return options;
}

Lines Created(const std::string& stage, const std::string& direction) {
    return {"Creating history at " + stage + " of call.", "Created " + direction + " call history.",
            "Finishing creating history at " + stage + " of call."};
}

Lines Inserted(const std::string& recType, const std::string& ref) {
    return {gmapi::Macro("Contact1-&gt;AccountNo"), gmapi::InsHist("A0002", recType, ref)};
}

struct Case {
    const char* name;
    std::map<std::string, std::string> options;
    std::string event;  // the switches for notification and type
    Lines messages;
    Lines commands{};
    std::string historyRow{};  // user, account, type, reference and notes of the new item
};

}  // namespace

class DispatchTest : public EndToEndTest, public testing::WithParamInterface<Case> {};

TEST_P(DispatchTest, DoesWhatTheOptionsSayAtThisEvent) {
    const Case& each = GetParam();
    PracticeGoldMine& goldMine = GoldMine();
    SetAll(each.options);
    const std::string commandLine = each.event + " /C:5551234567 /I:00042";
    const std::string count = "select count(*) from ContHist";
    const Lines before = goldMine.Sql(count);

    const Outcome run = Run(commandLine);

    Lines log = RunLog(commandLine, "00042",
                       Joined({{versionDetected},
                               each.messages,
                               {"Call processing completed in <seconds> seconds."}}));
    Check(run, {.log = log, .commands = Joined({startUpCommands, each.commands})});
    if (each.historyRow.empty()) {
        EXPECT_EQ(goldMine.Sql(count), before);
    } else {
        EXPECT_EQ(goldMine.Sql("select UserID, AccountNo, RecType, Ref, Notes from ContHist order "
                               "by rowid desc limit 1"),
                  Lines{each.historyRow});
    }
}

INSTANTIATE_TEST_SUITE_P(
    Events, DispatchTest,
    testing::Values(
        Case{"DefaultInboundStart",
             {},
             "/N:S /T:I",
             {pop + "requested while inbound call is _ringing_.",
              pop + "searching while incoming call is ringing.", found,
              pop + "processing completed.", history + "requested at _connection_ of call.",
              history + "call start event ignored.", history + "processing completed."},
             toldSearch},
        Case{"DefaultInboundEnd",
             {},
             "/N:E /T:I",
             {pop + "requested while inbound call is _ringing_.", pop + "call end event ignored.",
              pop + "processing completed.", history + "requested at _connection_ of call.",
              history + "call end event ignored.", history + "processing completed."}},
        Case{"DefaultOutboundStart",
             {},
             "/N:S /T:O",
             {history + "requested at _connection_ of call.", history + "call start event ignored.",
              history + "processing completed."}},
        Case{"DefaultOutboundEnd",
             {},
             "/N:E /T:O",
             {history + "requested at _connection_ of call.", history + "call end event ignored.",
              history + "processing completed."}},
        Case{"SearchWhenAnsweredAtStart",
             searchWhenAnswered,
             "/N:S /T:I",
             {pop + "requested when inbound call is _answered_.",
              pop + "call start (ringing) event ignored.", pop + "processing completed.",
              history + "requested at _connection_ of call.", history + "call start event ignored.",
              history + "processing completed."}},
        Case{"SearchWhenAnsweredHistoryAtStartAtStart",
             HistoryAt("optProcessStart", searchWhenAnswered), "/N:S /T:I",
             Joined({{pop + "requested when inbound call is _answered_.",
                      pop + "call start (ringing) event ignored.", pop + "processing completed.",
                      history + "requested at _start_ of call.", found},
                     Created("start", "incoming"),
                     {history + "processing completed."}}),
             Joined({quietSearch, Inserted("CI", "Started incoming call from (555)123-4567")}),
             "MASTER\tA0002\tCI\tStarted incoming call from (555)123-4567\t"},
        Case{"SearchWhenAnsweredHistoryAtStartAtConnection",
             HistoryAt("optProcessStart", searchWhenAnswered),
             "/N:C /T:I",
             {pop + "requested when inbound call is _answered_.",
              pop + "searching after incoming call was answered.", found,
              pop + "processing completed.", history + "requested at _start_ of call.",
              history + "call connect event ignored.", history + "processing completed."},
             toldSearch},
        Case{"SearchAndHistoryAtStartSearchOnce", HistoryAt("optProcessStart"), "/N:S /T:I",
             Joined({{pop + "requested while inbound call is _ringing_.",
                      pop + "searching while incoming call is ringing.", found,
                      pop + "processing completed.", history + "requested at _start_ of call."},
                     Created("start", "incoming"),
                     {history + "processing completed."}}),
             Joined({toldSearch, Inserted("CI", "Started incoming call from (555)123-4567")}),
             "MASTER\tA0002\tCI\tStarted incoming call from (555)123-4567\t"},
        // The search of the same run left the contact in the current window, where Phone1 matches.
        Case{"SearchAndHistoryAtConnectionSearchTwice",
             HistoryAt("optProcessConnect", searchWhenAnswered), "/N:C /T:I",
             Joined({{pop + "requested when inbound call is _answered_.",
                      pop + "searching after incoming call was answered.", found,
                      pop + "processing completed.", history + "requested at _connection_ of call.",
                      "Found (555)123-4567 in Phone1 of the current record."},
                     Created("connection", "incoming"),
                     {history + "processing completed."}}),
             Joined({toldSearch,
                     {gmapi::Macro("&amp;Phone1")},
                     Inserted("CI", "Connected incoming call from (555)123-4567")}),
             "MASTER\tA0002\tCI\tConnected incoming call from (555)123-4567\t"},
        Case{"HistoryAtTheEndOfAnOutboundCall", HistoryAt("optProcessEnd"), "/N:E /T:O",
             Joined({{history + "requested at _end_ of call.", found},
                     Created("end", "outgoing"),
                     {history + "processing completed."}}),
             Joined({quietSearch, Inserted("CO", "Ended outgoing call to (555)123-4567")}),
             "MASTER\tA0002\tCO\tEnded outgoing call to (555)123-4567\t"},
        Case{"HistoryWithoutReference",
             HistoryAt("optProcessEnd", {{"chkFillInRef", "0"}, {"chkPopOnInboundCall", "0"}}),
             "/N:E /T:I",
             Joined({{pop + "no searching requested on inbound call.",
                      history + "requested at _end_ of call.", found},
                     Created("end", "incoming"),
                     {history + "processing completed."}}),
             Joined({quietSearch, Inserted("CI", "")}), "MASTER\tA0002\tCI\t\t"},
        Case{"NoSearchAndNoHistory",
             {{"chkPopOnInboundCall", "0"}, {"chkCreateHistory", "0"}},
             "/N:S /T:I",
             {pop + "no searching requested on inbound call.",
              history + "no history creation requested."}},
        Case{"NoSearchWithoutHistoryOutbound",
             {{"chkCreateHistory", "0"}},
             "/N:C /T:O",
             {history + "no history creation requested."}},
        Case{"NoSearchLeavesTheHistory",
             noSearch,
             "/N:S /T:I",
             {pop + "no searching requested on inbound call.",
              history + "requested at _connection_ of call.", history + "call start event ignored.",
              history + "processing completed."}},
        Case{"UnknownNotification",
             {},
             "/N:X /T:I",
             {pop + "requested while inbound call is _ringing_.", pop + "processing completed.",
              history + "requested at _connection_ of call.", history + "processing completed."}},
        Case{"SmallLettersMatchNothing",
             {},
             "/N:s /T:i",
             {history + "requested at _connection_ of call.", history + "processing completed."}},
        Case{"WithoutACallType",
             {},
             "/N:S",
             {history + "requested at _connection_ of call.", history + "call start event ignored.",
              history + "processing completed."}}),
    NameOf);

}  // namespace end_to_end
