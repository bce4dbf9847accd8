#include "calls/Dispatcher.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "DispatcherFixture.h"

namespace corvane::test {
namespace {

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

TEST_F(DispatcherTest, TheStatusTabIsThereBeforeTheFirstLine) {
    form.setVisible(true);
    status.onWrite = [this] { EXPECT_EQ(form.tabstripOptions.selectedTab(), OptionsTab::status); };
    dispatcher.ProcessCall();
    EXPECT_FALSE(status.lines.empty());
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
