#include "check/calls/EventStory.h"

#include <gtest/gtest.h>

#include "CallLogFixture.h"

namespace corvane {
namespace {

using Lines = std::vector<std::string>;

// The event of a run with these messages, each at its second.
CallEvent EventOf(const Lines& messages,
                  const std::string& parameters = "/N:S /C:5551234567 /T:I /I:7") {
    Lines lines = {"17 00.000 [] Corvane 1.0.0.1 started with param(s): " + parameters + "."};
    const std::string identifier = parameters.find("/I:7") == std::string::npos ? "" : "7";
    for (const std::string& message : messages) {
        const auto space = message.find(' ');
        lines.push_back("17 " + message.substr(0, space) + " [" + identifier + "] " +
                        message.substr(space + 1));
    }
    lines.push_back("17 59.000 [" + identifier + "] Finished unloading form and closing program.");
    const CallLog log = ReadLog(LogOf(lines));
    EXPECT_EQ(log.calls.size(), 1U);
    return log.calls.at(0).events.at(0);
}

std::wstring OutcomeOf(const Lines& messages) {
    const CallEvent event = EventOf(messages);
    return Join(OutcomeWord(event.outcome), L": ", JoinedSteps(event));
}

const std::string searching = "01.000 " + popPhase + "searching while incoming call is ringing.";

TEST(EventStory, ReadsTheParametersAsTheProgramDoes) {
    const CallEvent answered = EventOf({}, "\"/N:C\" /T:O /C=555 /I:7");
    EXPECT_EQ(answered.what, L"answered");
    EXPECT_EQ(answered.direction, L"out");
    EXPECT_EQ(answered.number, L"555");
    EXPECT_EQ(answered.identifier, L"7");
    const CallEvent dial = EventOf({"01.000 Dialed 5551234567 using 3CX."}, "(555) 123-4567");
    EXPECT_EQ(dial.what, L"dial");
    EXPECT_EQ(dial.number, L"(555) 123-4567");
    EXPECT_EQ(dial.outcome, CallOutcome::dialed);
    EXPECT_EQ(JoinedSteps(dial), L"dialed 5551234567");
    EXPECT_EQ(EventOf({}, "/N:X /I:7").what, L"event");
}

TEST(EventStory, EachOutcomeHasItsWords) {
    EXPECT_EQ(OutcomeOf({searching, "02.000 Found 555 in a primary contact record."}),
              L"popped: popped in a primary contact record");
    EXPECT_EQ(OutcomeOf({"02.000 Found 555 in a primary contact record."}),
              L"found: found in a primary contact record");
    EXPECT_EQ(OutcomeOf({searching,
                         "02.000 Did not find GoldMine contact for 555. Further call processing "
                         "skipped."}),
              L"not found: not found");
    EXPECT_EQ(OutcomeOf({"01.000 Ignored short CallerID: 555."}),
              L"ignored: ignored: caller ID too short");
    EXPECT_EQ(OutcomeOf({"01.000 " + popPhase + "requested when inbound call is _answered_.",
                         "01.000 " + popPhase + "call start (ringing) event ignored.",
                         "01.000 " + historyPhase + "requested at _end_ of call."}),
              L"ignored: ignored: search is set to answered, history is set to ended");
    EXPECT_EQ(OutcomeOf({"01.000 " + popPhase + "no searching requested on inbound call.",
                         "01.000 " + historyPhase + "no history creation requested."}),
              L"ignored: ignored: search is set to never, history is set to never");
    EXPECT_EQ(OutcomeOf({}), L"ignored: ignored");
    EXPECT_EQ(OutcomeOf({"01.000 Run-time error '13':  ProcessCall: Type mismatch"}),
              L"trouble: run-time error '13':  ProcessCall: Type mismatch");
}

TEST(EventStory, TroubleGoesBeforeWhatWentWell) {
    EXPECT_EQ(OutcomeOf({searching, "02.000 Found 555 in Phone2 of the current record.",
                         "03.000 Created incoming call history.",
                         "04.000 Could not update history Notes with link."}),
              L"trouble: popped in Phone2 of the current record; history created; link not in the "
              L"notes");
}

TEST(EventStory, ADialogThatDoesNotComeUpIsTrouble) {
    const std::string asked = "02.000 Opening Complete Call dialog before saving in history.";
    EXPECT_EQ(OutcomeOf({asked,
                         "03.000 Finished opening Complete Call dialog before saving in history."}),
              L"ignored: Complete Call filled in");
    EXPECT_EQ(OutcomeOf({asked, "12.000 Waiting for history Ref and Notes to be filled in: 10"}),
              L"trouble: Complete Call did not come up");
    EXPECT_EQ(OutcomeOf({asked, "03.000 Could not open Complete Call dialog."}),
              L"trouble: Complete Call did not open");
}

TEST(EventStory, WhyTheRecordingWasNotLinked) {
    const std::string newest = "01.000 The most recent file in the recordings folder";
    EXPECT_EQ(OutcomeOf({newest + ", \"R:\\a.wav\", was created 800 seconds ago, which exceeds"}),
              L"ignored: no link: newest recording is too old");
    EXPECT_EQ(
        OutcomeOf({newest + " \"R:\\a.wav\" does not include the 3CX Call Identifier \"7\"."}),
        L"ignored: no link: newest recording is of another call");
}

TEST(EventStory, AContactIsUpOnceItsRecordIsShown) {
    EXPECT_EQ(EventOf({searching, "02.500 Found 555 in Phone1 of the current record.",
                       "03.500 " + popPhase + "processing completed."})
                  .timeToPop,
              milliseconds(2500));
    EXPECT_EQ(EventOf({searching, "02.500 Found 555 in an Additional Contact record.",
                       "03.500 " + popPhase + "processing completed."})
                  .timeToPop,
              milliseconds(3500))
        << "the record is shown after the line";
    EXPECT_FALSE(EventOf({"02.500 Found 555 in a primary contact record."}).timeToPop);
}

TEST(EventStory, TheSlowestCommandIsKept) {
    const auto slow = [](const std::string& seconds, const std::string& call) {
        return "> COM command > 1 second(s) (" + seconds + " seconds): '<GMAPI call=\"" + call +
               "\"><data/></GMAPI>'";
    };
    const CallEvent event =
        EventOf({"01.000 " + slow("1.200", "Macro"), "02.000 " + slow("12,345", "CallerID"),
                 "03.000 " + slow("2.000", "StatusMsg")});
    ASSERT_TRUE(event.slowest);
    EXPECT_EQ(event.slowest->time, milliseconds(12345)) << "the decimal sign is the user's";
    EXPECT_EQ(event.slowest->name, L"CallerID");
    EXPECT_FALSE(EventOf({"01.000 > COM command > 1 second(s) (soon)"}).slowest);
    EXPECT_FALSE(EventOf({"01.000 > COM command > 1 second(s) (1.2 seconds): ''"}).slowest);
}

TEST(EventStory, ABoxStandsBeforeItsLineOrBehindIt) {
    const auto box = [](const Lines& messages) {
        const CallEvent event = EventOf(messages);
        return event.box ? BoxText(*event.box) : L"none";
    };
    EXPECT_EQ(box({"01.000 GoldMine version 2014.1 detected.",
                   "15.200 Declined: Okay to define a dummy modem in your file?"}),
              L"14.200 s at most");
    EXPECT_EQ(box({"01.000 Run-time error '13':  ProcessCall: Type mismatch",
                   "08.000 Could not change nothing."}),
              L"7.000 s at most");
    EXPECT_EQ(box({"01.000 GoldMine version 2014.1 detected.", "01.500 " + popPhase}), L"none");
    EXPECT_EQ(box({"01.000 GoldMine version 2014.1 detected.", "09.000 " + popPhase}),
              L"8.000 s, if it was a box")
        << "a question that was answered leaves no line";
    EXPECT_EQ(box({"20.000 GoldMine is old.", "15.000 Could not retrieve UserName"}), L"none")
        << "the clock was set back";
}

TEST(EventStory, ALongErrorIsCut) {
    const std::string text(1000, 'x');
    EXPECT_LT(OutcomeOf({"01.000 Run-time error '13':  " + text}).size(), 220U);
}

}  // namespace
}  // namespace corvane
