#include "EndToEndTest.h"

namespace end_to_end {
namespace {

const std::string cid = "(555)123-4567";
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

struct DispatchCase {
    const char* name;
    std::map<std::string, std::string> options;
    std::string event;  // the switches for notification and type
    Lines messages;
    Lines commands{};
    std::string historyRow{};  // user, account, type, reference and notes of the new item
};

class DispatchTest : public EndToEndTest, public testing::WithParamInterface<DispatchCase> {};

TEST_P(DispatchTest, DoesWhatTheOptionsSayAtThisEvent) {
    const DispatchCase& each = GetParam();
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
        DispatchCase{
            "DefaultInboundStart",
            {},
            "/N:S /T:I",
            {popPhase + "requested while inbound call is _ringing_.",
             popPhase + "searching while incoming call is ringing.", foundLine,
             popPhase + "processing completed.",
             historyPhase + "requested at _connection_ of call.",
             historyPhase + "call start event ignored.", historyPhase + "processing completed."},
            toldSearch},
        DispatchCase{
            "DefaultInboundEnd",
            {},
            "/N:E /T:I",
            {popPhase + "requested while inbound call is _ringing_.",
             popPhase + "call end event ignored.", popPhase + "processing completed.",
             historyPhase + "requested at _connection_ of call.",
             historyPhase + "call end event ignored.", historyPhase + "processing completed."}},
        DispatchCase{
            "DefaultOutboundStart",
            {},
            "/N:S /T:O",
            {historyPhase + "requested at _connection_ of call.",
             historyPhase + "call start event ignored.", historyPhase + "processing completed."}},
        DispatchCase{
            "DefaultOutboundEnd",
            {},
            "/N:E /T:O",
            {historyPhase + "requested at _connection_ of call.",
             historyPhase + "call end event ignored.", historyPhase + "processing completed."}},
        DispatchCase{
            "SearchWhenAnsweredAtStart",
            searchWhenAnswered,
            "/N:S /T:I",
            {popPhase + "requested when inbound call is _answered_.",
             popPhase + "call start (ringing) event ignored.", popPhase + "processing completed.",
             historyPhase + "requested at _connection_ of call.",
             historyPhase + "call start event ignored.", historyPhase + "processing completed."}},
        DispatchCase{
            "SearchWhenAnsweredHistoryAtStartAtStart",
            HistoryAt("optProcessStart", searchWhenAnswered), "/N:S /T:I",
            Joined({{popPhase + "requested when inbound call is _answered_.",
                     popPhase + "call start (ringing) event ignored.",
                     popPhase + "processing completed.",
                     historyPhase + "requested at _start_ of call.", foundLine},
                    Created("start", "incoming"),
                    {historyPhase + "processing completed."}}),
            Joined({quietSearch, Inserted("CI", "Started incoming call from (555)123-4567")}),
            "MASTER\tA0002\tCI\tStarted incoming call from (555)123-4567\t"},
        DispatchCase{
            "SearchWhenAnsweredHistoryAtStartAtConnection",
            HistoryAt("optProcessStart", searchWhenAnswered),
            "/N:C /T:I",
            {popPhase + "requested when inbound call is _answered_.",
             popPhase + "searching after incoming call was answered.", foundLine,
             popPhase + "processing completed.", historyPhase + "requested at _start_ of call.",
             historyPhase + "call connect event ignored.", historyPhase + "processing completed."},
            toldSearch},
        DispatchCase{
            "SearchAndHistoryAtStartSearchOnce", HistoryAt("optProcessStart"), "/N:S /T:I",
            Joined({{popPhase + "requested while inbound call is _ringing_.",
                     popPhase + "searching while incoming call is ringing.", foundLine,
                     popPhase + "processing completed.",
                     historyPhase + "requested at _start_ of call."},
                    Created("start", "incoming"),
                    {historyPhase + "processing completed."}}),
            Joined({toldSearch, Inserted("CI", "Started incoming call from (555)123-4567")}),
            "MASTER\tA0002\tCI\tStarted incoming call from (555)123-4567\t"},
        // The search of the same run left the contact in the current window, where Phone1 matches.
        DispatchCase{"SearchAndHistoryAtConnectionSearchTwice",
                     HistoryAt("optProcessConnect", searchWhenAnswered), "/N:C /T:I",
                     Joined({{popPhase + "requested when inbound call is _answered_.",
                              popPhase + "searching after incoming call was answered.", foundLine,
                              popPhase + "processing completed.",
                              historyPhase + "requested at _connection_ of call.",
                              "Found (555)123-4567 in Phone1 of the current record."},
                             Created("connection", "incoming"),
                             {historyPhase + "processing completed."}}),
                     Joined({toldSearch,
                             {gmapi::Macro("&amp;Phone1")},
                             Inserted("CI", "Connected incoming call from (555)123-4567")}),
                     "MASTER\tA0002\tCI\tConnected incoming call from (555)123-4567\t"},
        DispatchCase{"HistoryAtTheEndOfAnOutboundCall", HistoryAt("optProcessEnd"), "/N:E /T:O",
                     Joined({{historyPhase + "requested at _end_ of call.", foundLine},
                             Created("end", "outgoing"),
                             {historyPhase + "processing completed."}}),
                     Joined({quietSearch, Inserted("CO", "Ended outgoing call to (555)123-4567")}),
                     "MASTER\tA0002\tCO\tEnded outgoing call to (555)123-4567\t"},
        DispatchCase{
            "HistoryWithoutReference",
            HistoryAt("optProcessEnd", {{"chkFillInRef", "0"}, {"chkPopOnInboundCall", "0"}}),
            "/N:E /T:I",
            Joined({{popPhase + "no searching requested on inbound call.",
                     historyPhase + "requested at _end_ of call.", foundLine},
                    Created("end", "incoming"),
                    {historyPhase + "processing completed."}}),
            Joined({quietSearch, Inserted("CI", "")}), "MASTER\tA0002\tCI\t\t"},
        DispatchCase{"NoSearchAndNoHistory",
                     {{"chkPopOnInboundCall", "0"}, {"chkCreateHistory", "0"}},
                     "/N:S /T:I",
                     {popPhase + "no searching requested on inbound call.",
                      historyPhase + "no history creation requested."}},
        DispatchCase{"NoSearchWithoutHistoryOutbound",
                     {{"chkCreateHistory", "0"}},
                     "/N:C /T:O",
                     {historyPhase + "no history creation requested."}},
        DispatchCase{
            "NoSearchLeavesTheHistory",
            noSearch,
            "/N:S /T:I",
            {popPhase + "no searching requested on inbound call.",
             historyPhase + "requested at _connection_ of call.",
             historyPhase + "call start event ignored.", historyPhase + "processing completed."}},
        DispatchCase{"UnknownNotification",
                     {},
                     "/N:X /T:I",
                     {popPhase + "requested while inbound call is _ringing_.",
                      popPhase + "processing completed.",
                      historyPhase + "requested at _connection_ of call.",
                      historyPhase + "processing completed."}},
        DispatchCase{"SmallLettersMatchNothing",
                     {},
                     "/N:s /T:i",
                     {historyPhase + "requested at _connection_ of call.",
                      historyPhase + "processing completed."}},
        DispatchCase{
            "WithoutACallType",
            {},
            "/N:S",
            {historyPhase + "requested at _connection_ of call.",
             historyPhase + "call start event ignored.", historyPhase + "processing completed."}}),
    NameOf);

}  // namespace
}  // namespace end_to_end
