#include "calls/Dispatcher.h"

#include <algorithm>
#include <memory>

#include "calls/CallHistory.h"
#include "calls/CompleteCallDialog.h"
#include "calls/HtmlNotes.h"
#include "calls/RecordingLink.h"
#include "dialing/Dialer.h"
#include "fakes/FakeFiles.h"
#include "fakes/FakeHtmlDocument.h"
#include "fakes/FakeProcesses.h"
#include "GoldMineFixture.h"
#include "util/ErrorReport.h"

namespace corvane::test {
namespace {

const std::wstring phone1Command =
    L"<GMAPI call=\"Macro\"><data name=\"Macro\">&amp;Phone1</data></GMAPI>";

// A dispatcher over a GoldMine whose open record holds the caller's number, or which knows no
// contact at all. Every search begins with the Phone1 of the open record.
class DispatcherFixture : public GoldMineFixture {
protected:
    DispatcherFixture() {
        form.txtCallerIDFormatted.setText(L"555");
        form.optPhone1Only.setSelected(true);
        form.GoldMineUserName = L"ANN";
        goldMine.answerAll = [this](const std::wstring& command) { return Answer(command); };
    }
    std::wstring Answer(const std::wstring& command) {
        if (command == phone1Command)
            return Reply(L"Macro", contactKnown ? L"1" : L"0", L"555");
        if (command.starts_with(L"<GMAPI call=\"StatusMsg\">")) {
            if (command.find(L"Corvane found") != std::wstring::npos)
                ++shownInGoldMine;
            return Reply(L"StatusMsg", L"1", L"");
        }
        if (command.starts_with(L"<GMAPI call=\"CallerID\">"))
            return Reply(L"CallerID", L"0", L"");
        if (command.starts_with(L"<GMAPI call=\"Macro\">"))
            return Reply(L"Macro", L"1", L"A1");
        if (command.starts_with(L"<GMAPI call=\"InsHist\">"))
            return Reply(L"InsHist", L"1", L"HR1");
        if (command.starts_with(L"<GMAPI call=\"RegisterWindowUpDown\">"))
            return Reply(L"RegisterWindowUpDown", L"1", L"Success");
        if (command.starts_with(L"<GMAPI call=\"MenuCommand\">"))
            return Reply(L"MenuCommand", L"1", L"The command was executed.");
        if (command == L"<GMAPI call=\"GetActiveWindowsList\"/>")
            return Reply(L"GetActiveWindowsList", L"1", L"");
        if (command.starts_with(L"<GMAPI call=\"SetControlText\">"))
            return Reply(L"GMUI_SetControlText", L"1", L"Success");
        ADD_FAILURE() << "unexpected command " << testing::PrintToString(command);
        return {};
    }
    [[nodiscard]] std::ptrdiff_t Searches() const {
        return std::count(goldMine.commands.begin(), goldMine.commands.end(), phone1Command);
    }
    // The first command of that call; empty when there is none.
    [[nodiscard]] std::wstring Sent(const std::wstring& call) const {
        for (const std::wstring& command : goldMine.commands) {
            if (command.starts_with(L"<GMAPI call=\"" + call + L"\">"))
                return command;
        }
        return {};
    }
    [[nodiscard]] std::wstring SentRef() const {
        const std::wstring command = Sent(L"InsHist");
        const std::wstring begin = L"<data name=\"Ref\">";
        const auto at = command.find(begin);
        if (at == std::wstring::npos)
            return L"(no history)";
        const auto from = at + begin.size();
        return command.substr(from, command.find(L"</data>", from) - from);
    }

    bool contactKnown = true;
    int shownInGoldMine = 0;
    FakeFileSystem files;
    FakeProcesses processes;
    HtmlScript html;
    Dialer dialer{form, processes, status, boxes};
    ContactSearch search{form, macro, dataStream, windows, status, boxes};
    CallHistory history{form, gmui, macro, records, status, boxes};
    RecordingLink recordingLink{form, files, status, boxes, clock};
    HtmlNotes notes{status, clock, [this] { return std::make_unique<FakeHtmlDocument>(html); },
                    L"CorvaneTo3CX"};
    ErrorReport errors{status, boxes};
    CallInProgress inProgress{form};
    CompleteCallDialog dialog{{form, gmui, windows, notes, inProgress, status, errors, clock}};
    Dispatcher dispatcher{
        {form, dialer, search, history, dialog, recordingLink, inProgress, status, clock}};
};

enum class Moment { None, Start, Connect, End };

struct CallEvent {
    std::wstring notification;
    std::wstring callType;
    bool pop;
    Moment searchMoment;
    bool createHistory;
    Moment historyMoment;
    bool contactKnown;
};

void PrintTo(const CallEvent& event, std::ostream* out) {
    *out << testing::PrintToString(event.notification) << " type "
         << testing::PrintToString(event.callType) << " pop " << event.pop << " at "
         << static_cast<int>(event.searchMoment) << " history " << event.createHistory << " at "
         << static_cast<int>(event.historyMoment) << " known " << event.contactKnown;
}

// What one event is expected to do: the user's table of moments, not the program's branches.
struct Expected {
    Lines lines;
    int searches = 0;
    int shown = 0;
    std::wstring ref = L"(no history)";
};

struct NotificationRow {
    std::wstring_view letter;
    Moment moment;
    std::wstring_view searching;      // when the search is configured for this moment
    std::wstring_view searchIgnored;  // when it is not
    std::wstring_view historyIgnored;
    std::wstring_view stage;
    std::wstring_view refWord;
};

constexpr NotificationRow notificationRows[] = {
    {L"S", Moment::Start,
     L"Inbound call search for CallerID:  searching while incoming call is ringing.",
     L"Inbound call search for CallerID:  call start (ringing) event ignored.",
     L"History creation:  call start event ignored.", L"start", L"Started "},
    {L"C", Moment::Connect,
     L"Inbound call search for CallerID:  searching after incoming call was answered.",
     L"Inbound call search for CallerID:  call connect (answered) event ignored.",
     L"History creation:  call connect event ignored.", L"connection", L"Connected "},
    {L"E", Moment::End, L"", L"Inbound call search for CallerID:  call end event ignored.",
     L"History creation:  call end event ignored.", L"end", L"Ended "},
};

struct MomentRow {
    Moment moment;
    std::wstring_view searchLine;
    std::wstring_view historyLine;
};

constexpr MomentRow momentRows[] = {
    {Moment::None, L"", L""},
    {Moment::Start,
     L"Inbound call search for CallerID:  requested while inbound call is _ringing_.",
     L"History creation:  requested at _start_ of call."},
    {Moment::Connect,
     L"Inbound call search for CallerID:  requested when inbound call is _answered_.",
     L"History creation:  requested at _connection_ of call."},
    {Moment::End, L"", L"History creation:  requested at _end_ of call."},
};

struct CallTypeRow {
    std::wstring_view letter;
    std::wstring_view refWords;
    std::wstring_view created;
};

constexpr CallTypeRow callTypeRows[] = {
    {L"I", L"incoming call from 555", L"Created incoming call history."},
    {L"O", L"outgoing call to 555", L"Created outgoing call history."},
};

class Model {
public:
    explicit Model(const CallEvent& event) : event_(event) {
        for (const NotificationRow& row : notificationRows) {
            if (row.letter == event.notification)
                notification_ = &row;
        }
        for (const CallTypeRow& row : callTypeRows) {
            if (row.letter == event.callType)
                callType_ = &row;
        }
    }

    Expected Run() {
        if (callType_ == &callTypeRows[0])
            ExpectInboundPhase();
        ExpectHistoryPhase();
        Say(L"Call processing completed in 0.000 seconds.");
        return expected_;
    }

private:
    void Say(std::wstring_view line) {
        if (!line.empty())
            expected_.lines.emplace_back(line);
    }
    static const MomentRow& Row(Moment moment) {
        return momentRows[static_cast<std::size_t>(moment)];
    }
    void ExpectSearch(bool shown) {
        ++expected_.searches;
        expected_.shown += shown && event_.contactKnown ? 1 : 0;
        Say(event_.contactKnown
                ? L"Found 555 in Phone1 of the current record."
                : L"Did not find GoldMine contact for 555. Further call processing skipped.");
    }
    void ExpectInboundPhase() {
        if (!event_.pop) {
            Say(L"Inbound call search for CallerID:  no searching requested on inbound call.");
            return;
        }
        Say(Row(event_.searchMoment).searchLine);
        if (notification_ && notification_->moment == event_.searchMoment) {
            Say(notification_->searching);
            ExpectSearch(true);
        } else if (notification_) {
            Say(notification_->searchIgnored);
        }
        Say(L"Inbound call search for CallerID:  processing completed.");
    }
    void ExpectHistoryPhase() {
        if (!event_.createHistory) {
            Say(L"History creation:  no history creation requested.");
            return;
        }
        Say(Row(event_.historyMoment).historyLine);
        if (notification_ && notification_->moment == event_.historyMoment) {
            // Only a ringing call's own find is used again.
            const bool foundWhileRinging = expected_.searches == 1 && event_.contactKnown &&
                                           notification_->moment == Moment::Start;
            if (!foundWhileRinging)
                ExpectSearch(false);
            if (event_.contactKnown)
                ExpectHistory();
        } else if (notification_) {
            Say(notification_->historyIgnored);
        }
        Say(L"History creation:  processing completed.");
    }
    void ExpectHistory() {
        const std::wstring stage(notification_->stage);
        Say(L"Creating history at " + stage + L" of call.");
        if (callType_)
            Say(callType_->created);
        Say(L"Finishing creating history at " + stage + L" of call.");
        expected_.ref =
            callType_ ? std::wstring(notification_->refWord) + std::wstring(callType_->refWords)
                      : std::wstring();
    }

    const CallEvent& event_;
    const NotificationRow* notification_ = nullptr;
    const CallTypeRow* callType_ = nullptr;
    Expected expected_;
};

class CallEventTest : public DispatcherFixture, public testing::WithParamInterface<CallEvent> {};

std::vector<CallEvent> EveryCallEvent() {
    std::vector<CallEvent> events;
    for (const wchar_t* notification : {L"S", L"C", L"E", L"", L"s", L"X"})
        for (const wchar_t* callType : {L"I", L"O", L"", L"i"})
            for (const bool pop : {false, true})
                for (const Moment search : {Moment::None, Moment::Start, Moment::Connect})
                    for (const bool create : {false, true})
                        for (const Moment historyMoment :
                             {Moment::None, Moment::Start, Moment::Connect, Moment::End})
                            for (const bool known : {false, true})
                                events.push_back({notification, callType, pop, search, create,
                                                  historyMoment, known});
    return events;
}

TEST_P(CallEventTest, DoesWhatIsConfiguredForItsMoment) {
    const CallEvent& event = GetParam();
    contactKnown = event.contactKnown;
    form.txtNotifType.setText(event.notification);
    form.txtCallType.setText(event.callType);
    form.chkPopOnInboundCall.setChecked(event.pop);
    form.optPopOnInboundCallStart.setSelected(event.searchMoment == Moment::Start);
    form.optPopOnInboundCallConnect.setSelected(event.searchMoment == Moment::Connect);
    form.chkCreateHistory.setChecked(event.createHistory);
    form.optProcessStart.setSelected(event.historyMoment == Moment::Start);
    form.optProcessConnect.setSelected(event.historyMoment == Moment::Connect);
    form.optProcessEnd.setSelected(event.historyMoment == Moment::End);
    form.chkFillInRef.setChecked(true);

    dispatcher.ProcessCall();

    const Expected expected = Model(event).Run();
    EXPECT_EQ(status.lines, expected.lines);
    EXPECT_EQ(Searches(), expected.searches);
    EXPECT_EQ(shownInGoldMine, expected.shown);
    EXPECT_EQ(SentRef(), expected.ref);
    EXPECT_TRUE(std::all_of(status.modes.begin(), status.modes.end(),
                            [](LogMode mode) { return mode == LogMode::AsConfigured; }));
}

INSTANTIATE_TEST_SUITE_P(EveryCombination, CallEventTest, testing::ValuesIn(EveryCallEvent()));

class DispatcherTest : public DispatcherFixture {
protected:
    // An event that creates history at once: outbound, at its end.
    DispatcherTest() {
        form.txtNotifType.setText(L"E");
        form.txtCallType.setText(L"O");
        form.chkCreateHistory.setChecked(true);
        form.optProcessEnd.setSelected(true);
    }
    // Everything behind "Creating history at ...", without the closing and timing lines.
    [[nodiscard]] Lines HistoryLines() const {
        const auto begin = std::find(status.lines.begin(), status.lines.end(),
                                     L"Creating history at end of call.");
        const auto end =
            std::find(begin, status.lines.end(), L"Finishing creating history at end of call.");
        if (end == status.lines.end())
            return {L"(no history)"};
        return {begin + 1, end};
    }
    void OpenTheDialog() {
        form.chkAutoOpenHistory.setChecked(true);
        form.GoldMineVersionOK = true;
        form.optOpenHistoryBeforeSaving.setSelected(true);
    }
    void AddRecording() {
        form.txtLinkedItemPath.setText(L"C:\\Rec");
        files.folders.insert(L"C:\\Rec");
        files.newest = {L"a.wav", clock.Now(), 3};
        form.chkCreateLink.setChecked(true);
    }
};

TEST_F(DispatcherTest, SearchOnConnectAndHistoryAtStartSearchOncePerEvent) {
    form.txtCallType.setText(L"I");
    form.chkPopOnInboundCall.setChecked(true);
    form.optPopOnInboundCallConnect.setSelected(true);
    form.optProcessStart.setSelected(true);

    form.txtNotifType.setText(L"S");
    dispatcher.ProcessCall();
    EXPECT_EQ(
        status.lines,
        (Lines{L"Inbound call search for CallerID:  requested when inbound call is "
               L"_answered_.",
               L"Inbound call search for CallerID:  call start (ringing) event ignored.",
               L"Inbound call search for CallerID:  processing completed.",
               L"History creation:  requested at _start_ of call.",
               L"Found 555 in Phone1 of the current record.", L"Creating history at start of call.",
               L"Created incoming call history.", L"Finishing creating history at start of call.",
               L"History creation:  processing completed.",
               L"Call processing completed in 0.000 seconds."}));
    EXPECT_EQ(Searches(), 1);
    EXPECT_EQ(shownInGoldMine, 0);

    status.lines.clear();
    form.txtNotifType.setText(L"C");
    dispatcher.ProcessCall();
    EXPECT_EQ(status.lines,
              (Lines{L"Inbound call search for CallerID:  requested when inbound call is "
                     L"_answered_.",
                     L"Inbound call search for CallerID:  searching after incoming call was "
                     L"answered.",
                     L"Found 555 in Phone1 of the current record.",
                     L"Inbound call search for CallerID:  processing completed.",
                     L"History creation:  requested at _start_ of call.",
                     L"History creation:  call connect event ignored.",
                     L"History creation:  processing completed.",
                     L"Call processing completed in 0.000 seconds."}));
    EXPECT_EQ(Searches(), 2);
    EXPECT_EQ(shownInGoldMine, 1);
}

TEST_F(DispatcherTest, TheTimeTakenIsReported) {
    goldMine.onSend = [this](const std::wstring& command) {
        if (command == phone1Command)
            clock.Advance(1250);
    };
    dispatcher.ProcessCall();
    EXPECT_EQ(status.lines.back(), L"Call processing completed in 1.250 seconds.");
}

TEST_F(DispatcherTest, AVisibleWindowTurnsToTheStatusTab) {
    form.setVisible(true);
    dispatcher.ProcessCall();
    EXPECT_EQ(form.tabstripOptions.selectedTab(), OptionsTab::status);
}

TEST_F(DispatcherTest, AHiddenWindowKeepsItsTab) {
    dispatcher.ProcessCall();
    EXPECT_EQ(form.tabstripOptions.selectedTab(), OptionsTab::general);
}

TEST_F(DispatcherTest, ADialRequestDialsAndDoesNothingElse) {
    form.txtOutboundPhone.setText(L"(555) 123-4567");
    form.txt3CXOutboundCallNotifierPath.setText(L"C:\\3CX\\CallTriggerCmd.exe");
    form.txtCallType.setText(L"I");
    form.chkPopOnInboundCall.setChecked(true);

    dispatcher.ProcessCall();

    EXPECT_EQ(processes.started,
              Lines{L"\"C:\\3CX\\CallTriggerCmd.exe\" -cmd makecall:5551234567"});
    EXPECT_EQ(status.lines, (Lines{L"Dialed 5551234567 using 3CX.",
                                   L"Call processing completed in 0.000 seconds."}));
    EXPECT_EQ(goldMine.commands, Lines{});
}

TEST_F(DispatcherTest, ADialRequestThatFailsWritesNoTimingLine) {
    form.txtOutboundPhone.setText(L"CALLME");
    dispatcher.ProcessCall();
    EXPECT_EQ(status.lines, Lines{L"Number to dial \"CALLME\" contains no digits. Call processing "
                                  L"terminated."});
    EXPECT_EQ(boxes.Take().size(), 1U);
    EXPECT_TRUE(processes.started.empty());

    status.lines.clear();
    form.txtOutboundPhone.setText(L"5");
    processes.startSucceeds = false;
    dispatcher.ProcessCall();
    EXPECT_EQ(status.lines.size(), 1U);
    EXPECT_EQ(boxes.Take().size(), 1U);
}

struct Reference {
    std::wstring notification;
    std::wstring callType;
    std::wstring ref;
};

class ReferenceTest : public DispatcherTest, public testing::WithParamInterface<Reference> {
protected:
    ReferenceTest() {
        form.txtNotifType.setText(GetParam().notification);
        form.txtCallType.setText(GetParam().callType);
        const bool start = GetParam().notification == L"S";
        const bool connect = GetParam().notification == L"C";
        form.optProcessStart.setSelected(start);
        form.optProcessConnect.setSelected(connect);
        form.optProcessEnd.setSelected(!start && !connect);
        form.txtCallerIDFormatted.setText(L"555");
    }
};

TEST_P(ReferenceTest, SaysWhatHappenedWithWhom) {
    form.chkFillInRef.setChecked(true);
    dispatcher.ProcessCall();
    EXPECT_EQ(SentRef(), GetParam().ref);
}

TEST_P(ReferenceTest, IsEmptyUnlessWanted) {
    form.chkFillInRef.setChecked(false);
    dispatcher.ProcessCall();
    EXPECT_EQ(SentRef(), L"");
}

INSTANTIATE_TEST_SUITE_P(Events, ReferenceTest,
                         testing::Values(Reference{L"S", L"I", L"Started incoming call from 555"},
                                         Reference{L"C", L"I", L"Connected incoming call from 555"},
                                         Reference{L"E", L"I", L"Ended incoming call from 555"},
                                         Reference{L"S", L"O", L"Started outgoing call to 555"},
                                         Reference{L"C", L"O", L"Connected outgoing call to 555"},
                                         Reference{L"E", L"O", L"Ended outgoing call to 555"},
                                         Reference{L"E", L"", L""}, Reference{L"S", L"i", L""}));

TEST_F(DispatcherTest, TheLinkIsLookedForAtOnceWithoutADelay) {
    AddRecording();
    form.txtLinkedItemPath.setText(L"C:\\None");
    form.txtDelayAddingLinkSeconds.setText(L"not a number");
    dispatcher.ProcessCall();
    EXPECT_TRUE(clock.sleeps.empty());
    EXPECT_EQ(clock.pumps, 0);
    EXPECT_EQ(HistoryLines(),
              (Lines{L"Could not access recordings folder \"C:\\None\". Link to recording not "
                     L"saved.",
                     L"Created outgoing call history."}));
    EXPECT_EQ(boxes.Take().size(), 1U);
}

TEST_F(DispatcherTest, ADelayIsAnnouncedPumpsOnceAndSleepsBeforeTheLinkIsLookedFor) {
    AddRecording();
    form.txtLinkedItemPath.setText(L"C:\\None");
    form.chkDelayAddingLink.setChecked(true);
    form.txtDelayAddingLinkSeconds.setText(L"5");
    Lines linesAtPump;
    clock.onPump = [&] {
        linesAtPump = status.lines;
        EXPECT_TRUE(clock.sleeps.empty());
    };

    dispatcher.ProcessCall();

    EXPECT_EQ(clock.pumps, 1);
    EXPECT_EQ(clock.sleeps, std::vector<std::uint32_t>{5000});
    ASSERT_FALSE(linesAtPump.empty());
    EXPECT_EQ(linesAtPump.back(), L"Delaying adding link for 5 seconds.");
    EXPECT_EQ(HistoryLines()[0], L"Delaying adding link for 5 seconds.");
    EXPECT_EQ(boxes.Take().size(), 1U);
}

TEST_F(DispatcherTest, ADelayOfZeroIsAnnouncedAndEmpty) {
    AddRecording();
    form.txtLinkedItemPath.setText(L"C:\\None");
    form.chkDelayAddingLink.setChecked(true);
    form.txtDelayAddingLinkSeconds.setText(L"0");
    const std::int64_t before = clock.millisecondOfDay;
    dispatcher.ProcessCall();
    EXPECT_EQ(HistoryLines()[0], L"Delaying adding link for 0 seconds.");
    EXPECT_EQ(clock.millisecondOfDay, before);
    EXPECT_EQ(boxes.Take().size(), 1U);
}

TEST_F(DispatcherTest, ANegativeDelayIsAnnouncedAndEmpty) {
    AddRecording();
    form.txtLinkedItemPath.setText(L"C:\\None");
    form.chkDelayAddingLink.setChecked(true);
    form.txtDelayAddingLinkSeconds.setText(L"-1");
    dispatcher.ProcessCall();
    EXPECT_EQ(HistoryLines()[0], L"Delaying adding link for -1 seconds.");
    EXPECT_TRUE(clock.sleeps.empty());
    EXPECT_EQ(clock.pumps, 1);
    EXPECT_EQ(boxes.Take().size(), 1U);
}

struct BadDelay {
    std::wstring seconds;
    std::int32_t error;
};

class BadDelayTest : public DispatcherTest, public testing::WithParamInterface<BadDelay> {};

TEST_P(BadDelayTest, IsARuntimeError) {
    AddRecording();
    form.chkDelayAddingLink.setChecked(true);
    form.txtDelayAddingLinkSeconds.setText(GetParam().seconds);
    EXPECT_EQ(ErrorOf([&] { dispatcher.ProcessCall(); }).number, GetParam().error);
    EXPECT_TRUE(clock.sleeps.empty());
    EXPECT_EQ(clock.pumps, 0);
    ASSERT_FALSE(status.lines.empty());
    EXPECT_EQ(status.lines.back(), L"Creating history at end of call.")
        << "a delay that cannot be waited for is not announced";
}

INSTANTIATE_TEST_SUITE_P(Texts, BadDelayTest,
                         testing::Values(BadDelay{L"soon", 13}, BadDelay{L"", 13},
                                         BadDelay{L"2147484", 6}, BadDelay{L"99999999999", 6}));

TEST_F(DispatcherTest, WithoutTheLinkNothingIsDelayed) {
    form.chkDelayAddingLink.setChecked(true);
    form.txtDelayAddingLinkSeconds.setText(L"5");
    dispatcher.ProcessCall();
    EXPECT_TRUE(clock.sleeps.empty());
    EXPECT_EQ(HistoryLines(), Lines{L"Created outgoing call history."});
}

struct DialogRoad {
    bool autoOpen;
    bool versionOK;
    bool beforeSaving;
    bool dialog;
};

class DialogRoadTest : public DispatcherTest, public testing::WithParamInterface<DialogRoad> {};

TEST_P(DialogRoadTest, TheDialogIsOpenedOnlyWhenAllThreeSaySo) {
    form.chkAutoOpenHistory.setChecked(GetParam().autoOpen);
    form.GoldMineVersionOK = GetParam().versionOK;
    form.optOpenHistoryBeforeSaving.setSelected(GetParam().beforeSaving);
    form.optOpenHistoryAfterSaving.setSelected(!GetParam().beforeSaving);
    goldMine.answerAll = [this](const std::wstring& command) {
        return command.starts_with(L"<GMAPI call=\"PopCalHistItem\">")
                   ? Reply(L"PopCalHistItem", L"1", L"Success")
                   : Answer(command);
    };

    dispatcher.ProcessCall();

    EXPECT_EQ(!Sent(L"MenuCommand").empty(), GetParam().dialog);
    EXPECT_EQ(Sent(L"InsHist").empty(), GetParam().dialog);
    EXPECT_EQ(HistoryLines()[0], GetParam().dialog
                                     ? L"Opening Complete Call dialog before saving in history."
                                     : L"Created outgoing call history.");
}

INSTANTIATE_TEST_SUITE_P(Settings, DialogRoadTest,
                         testing::Values(DialogRoad{true, true, true, true},
                                         DialogRoad{false, true, true, false},
                                         DialogRoad{true, false, true, false},
                                         DialogRoad{true, true, false, false},
                                         DialogRoad{false, false, false, false}));

TEST_F(DispatcherTest, TheRecordingOfTheCallBeforeIsForgotten) {
    OpenTheDialog();
    AddRecording();
    dispatcher.ProcessCall();
    form.chkCreateLink.setChecked(false);
    dispatcher.ProcessCall();

    // Neither a Reference nor a link: no field of the dialog is touched.
    goldMine.commands.clear();
    dialog.moGMUI_WindowUpDown(L"DIALOGSCHEDULECOMPLETE", true, 4711);
    EXPECT_EQ(goldMine.commands, Lines{});
}

TEST_F(DispatcherTest, TheReferenceOfTheCallBeforeIsForgotten) {
    form.chkFillInRef.setChecked(true);
    OpenTheDialog();
    dispatcher.ProcessCall();
    goldMine.commands.clear();
    dialog.moGMUI_WindowUpDown(L"DIALOGSCHEDULECOMPLETE", true, 4711);
    EXPECT_NE(goldMine.commands, Lines{});

    form.chkFillInRef.setChecked(false);
    dispatcher.ProcessCall();

    goldMine.commands.clear();
    dialog.moGMUI_WindowUpDown(L"DIALOGSCHEDULECOMPLETE", true, 4711);
    EXPECT_EQ(goldMine.commands, Lines{});
}

TEST_F(DispatcherTest, ADialogStillAwaitedGetsItsOwnCallsReference) {
    form.chkFillInRef.setChecked(true);
    OpenTheDialog();
    form.txtCallType.setText(L"O");
    dispatcher.ProcessCall();

    // The next call is under way: its recording is waited for.
    AddRecording();
    form.txtCallType.setText(L"I");
    form.chkDelayAddingLink.setChecked(true);
    form.txtDelayAddingLinkSeconds.setText(L"1");
    Lines filledIn;
    clock.onPump = [&] {
        goldMine.commands.clear();
        dialog.moGMUI_WindowUpDown(L"DIALOGSCHEDULECOMPLETE", true, 4711);
        filledIn = goldMine.commands;
    };
    dispatcher.ProcessCall();

    ASSERT_FALSE(filledIn.empty());
    EXPECT_NE(filledIn.back().find(L"outgoing call to 555"), std::wstring::npos) << filledIn.back();
}

TEST_F(DispatcherTest, OnlyAnUncheckedBoxMeansNoHistory) {
    form.chkCreateHistory.setValue(2);
    dispatcher.ProcessCall();
    EXPECT_EQ(std::count(status.lines.begin(), status.lines.end(),
                         L"History creation:  no history creation requested."),
              0);
}

}  // namespace
}  // namespace corvane::test
