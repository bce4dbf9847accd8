#include <map>

#include "WindowTest.h"

namespace end_to_end {
namespace {

const Box masterQuestion{
    "The program must be reloaded to re-enable the link between GoldMine and 3CX. Okay to save "
    "your settings and exit? You can then re-start the program.",
    "Yes No"};
const Box contactsQuestion{
    "Has your system administrator added database indexes on the ContSupp.Phone and ContSupp.Fax "
    "fields? This is required in order for this function to work efficiently.",
    "Yes No"};

// The boxes that rules look at.
using State = std::map<std::string, bool>;
const std::vector<std::string> controllingBoxes = {
    "chkTrimOutboundPrefix", "chkIgnoreShortCallerID",
    "chkPopOnInboundCall",   "chkCreateHistory",
    "chkCreateLink",         "chkDelayAddingLink",
    "chkAutoOpenHistory",    "chkConfirmRecentRecordingFile",
    "chkAlwaysShowForm"};

// Which controls have to be usable, from the rules as they are told to users.
State Expected(const State& checked, bool openBeforeSaving) {
    const bool history = checked.at("chkCreateHistory");
    const bool link = history && checked.at("chkCreateLink");
    const bool open = history && checked.at("chkAutoOpenHistory");
    return {
        {"txtOutboundMaxLength", checked.at("chkTrimOutboundPrefix")},
        {"txtCallerIDMinLength", checked.at("chkIgnoreShortCallerID")},
        {"optPopOnInboundCallStart", checked.at("chkPopOnInboundCall")},
        {"optPopOnInboundCallConnect", checked.at("chkPopOnInboundCall")},
        {"optProcessStart", history},
        {"optProcessConnect", history},
        {"optProcessEnd", history},
        {"chkFillInRef", history},
        {"chkAutoOpenHistory", history},
        {"chkCreateLink", history},
        {"txtLinkedItemPath", link},
        {"chkDelayAddingLink", link},
        {"chkConfirmRecentRecordingFile", link},
        {"chkConfirmLinkCallIdentifier", link},
        {"lblDelayAddingLinkSeconds", link},
        {"lblRecordingFileMaxAgeSeconds", link},
        {"txtDelayAddingLinkSeconds", link && checked.at("chkDelayAddingLink")},
        {"txtRecordingFileMaxAgeSeconds", link && checked.at("chkConfirmRecentRecordingFile")},
        {"optOpenHistoryBeforeSaving", open},
        {"optOpenHistoryAfterSaving", open},
        {"optCompleteScheduledCall", open && openBeforeSaving},
        {"optCompleteUnscheduledCall", open && openBeforeSaving},
        {"chkAutoProcess", checked.at("chkAlwaysShowForm")},
    };
}

State Usable(HWND window, const State& controls) {
    State usable;
    for (const auto& each : controls)
        usable[each.first] = ControlEnabled(window, each.first);
    return usable;
}

class WindowRulesTest : public WindowTest {};

TEST_F(WindowRulesTest, EverySampledStateEnablesWhatTheRulesSay) {
    // Neighbours in the sample differ in many boxes, so that chains go on and off as a whole; every
    // two of them, and those of each chain, come in every combination.
    constexpr unsigned step = 173;
    constexpr int samples = 24;
    GoldMine();
    ProgramRun run = Start("");
    const HWND window = Show(run);
    unsigned bits = 0;

    for (int sample = 0; sample < samples; ++sample, bits += step) {
        State wanted;
        for (size_t i = 0; i < controllingBoxes.size(); ++i)
            wanted[controllingBoxes[i]] = ((bits >> i) & 1u) != 0;
        // A bit of its own, behind those of the boxes.
        const bool before = ((bits >> controllingBoxes.size()) & 1u) != 0;
        // Only what is usable can be clicked: parents are switched on for that.
        for (const char* parent : {"chkCreateHistory", "chkCreateLink", "chkAutoOpenHistory"}) {
            if (!Checked(window, parent))
                Click(window, parent);
        }
        Click(window, before ? "optOpenHistoryBeforeSaving" : "optOpenHistoryAfterSaving");
        for (const char* child :
             {"chkDelayAddingLink", "chkConfirmRecentRecordingFile", "chkAutoOpenHistory",
              "chkCreateLink", "chkCreateHistory", "chkTrimOutboundPrefix",
              "chkIgnoreShortCallerID", "chkPopOnInboundCall", "chkAlwaysShowForm"}) {
            if (Checked(window, child) != wanted.at(child))
                Click(window, child);
        }
        const State expected = Expected(wanted, before);
        EXPECT_EQ(Usable(window, expected), expected) << "sample " << sample;
    }
    CloseAndDiscard(run, window);
}

TEST_F(WindowRulesTest, AnOptionClearsItsGroupAndNoOther) {
    CloseGoldMine();
    ProgramRun run = Start("");
    const HWND window = Show(run);

    Click(window, "optProcessEnd");

    EXPECT_TRUE(Checked(window, "optProcessEnd"));
    EXPECT_FALSE(Checked(window, "optProcessStart"));
    EXPECT_FALSE(Checked(window, "optProcessConnect"));
    EXPECT_TRUE(Checked(window, "optPopOnInboundCallStart"));
    EXPECT_TRUE(Checked(window, "optPopNewWindow"));
    EXPECT_TRUE(Checked(window, "optPhone123"));
    EXPECT_TRUE(Checked(window, "optOpenHistoryBeforeSaving"));
    CloseAndDiscard(run, window);
}

TEST_F(WindowRulesTest, TheMasterSwitchLeavesOnlyItselfSaveAndExit) {
    CloseGoldMine();
    ProgramRun run = Start("");
    const HWND window = Show(run);

    Click(window, "chkGlobalEnable");

    for (const char* usable : {"chkGlobalEnable", "frameGlobal", "cmdSaveSettings", "cmdExit"})
        EXPECT_TRUE(ControlEnabled(window, usable)) << usable;
    for (const char* disabled :
         {"tabstripOptions", "chkTrimOutboundPrefix", "txtOutboundMaxLength", "cmdParams",
          "cmdDefaults", "cmdProcessCall", "chkCreateHistory", "txtStatus"}) {
        EXPECT_FALSE(ControlEnabled(window, disabled)) << disabled;
    }
    CloseAndDiscard(run, window);
}

TEST_F(WindowRulesTest, TheMasterSwitchAnsweredNoStaysOff) {
    CloseGoldMine();
    Set("chkGlobalEnable", "0");
    ProgramRun run = Start("");
    const HWND window = Show(run);

    PressControl(window, "chkGlobalEnable");
    run.Answer("No");

    EXPECT_FALSE(Checked(window, "chkGlobalEnable"));
    Close(run, window, {masterQuestion});  // nothing counts as changed
    EXPECT_EQ(OwnValue("chkGlobalEnable"), "0");
}

TEST_F(WindowRulesTest, TheMasterSwitchAnsweredYesSavesAndEnds) {
    CloseGoldMine();
    Set("chkGlobalEnable", "0");
    ProgramRun run = Start("");
    const HWND window = Show(run);

    PressControl(window, "chkGlobalEnable");

    EXPECT_EQ(Finish(run, {"Yes"}).boxes, Boxes{masterQuestion});
    EXPECT_EQ(OwnValue("chkGlobalEnable"), "1");
}

TEST_F(WindowRulesTest, AdditionalContactsAreSearchedOnlyAfterYes) {
    CloseGoldMine();
    ProgramRun run = Start("");
    const HWND window = Show(run);

    PressControl(window, "chkSearchInAddlContacts");
    run.Answer("No");
    EXPECT_FALSE(Checked(window, "chkSearchInAddlContacts"));
    PressControl(window, "chkSearchInAddlContacts");
    run.Answer("Yes");
    EXPECT_TRUE(Checked(window, "chkSearchInAddlContacts"));
    Click(window, "chkSearchInAddlContacts");
    EXPECT_FALSE(Checked(window, "chkSearchInAddlContacts"));

    // Yes counted as a change.
    CloseAndDiscard(run, window, {contactsQuestion, contactsQuestion});
}

// A box takes the window's activation and gives it back; neither is a matter of the call.
TEST_F(WindowRulesTest, ABoxThatOpensAndClosesLeavesProcessCallAsItWas) {
    Set("chkAlwaysShowForm", "1");
    Set("chkAutoProcess", "0");
    for (const bool withCall : {true, false}) {
        GoldMine();
        ProgramRun run = Start(withCall ? "/N:S /C:5551234567 /T:I /I:7" : "");
        const HWND window = run.WaitForWindow();
        const auto staysSo = [&] {
            EXPECT_TRUE(WaitUntil([&] { return IsWindowEnabled(window); }));
            EXPECT_EQ(ControlEnabled(window, "cmdProcessCall"), withCall);
        };
        const auto answers = [&](const std::string& control, const std::string& answer) {
            PressControl(window, control);
            EXPECT_TRUE(WaitUntil([&] { return FindBox(run.processId()) != nullptr; }));
            EXPECT_EQ(ControlEnabled(window, "cmdProcessCall"), withCall) << "behind the box";
            run.Answer(answer);
            staysSo();
        };
        EXPECT_TRUE(WaitUntil([&] {
            return ControlText(window, "txtStatus").find("2014.1 detected") != std::string::npos;
        }));
        staysSo();
        answers("chkSearchInAddlContacts", "No");
        answers("chkSearchInAddlContacts", "No");
        if (withCall) {
            CloseGoldMine();
            answers("cmdProcessCall", "OK");
            answers("cmdProcessCall", "OK");
        }
        PostMessageW(window, WM_CLOSE, 0, 0);
        EXPECT_EQ(Finish(run).boxes.size(), withCall ? 4u : 2u);
    }
}

TEST_F(WindowRulesTest, RestoringDefaultsSparesTheMasterSwitchAndSavesNothing) {
    CloseGoldMine();
    SetAll({{"txtOutboundMaxLength", "7"},
            {"chkFormatCallerID", "0"},
            {"optProcessEnd", "True"},
            {"chkWriteLog", "1"}});
    ProgramRun run = Start("");
    const HWND window = Show(run);

    Click(window, "cmdDefaults");

    EXPECT_EQ(ControlText(window, "txtOutboundMaxLength"), "10");
    EXPECT_TRUE(Checked(window, "chkFormatCallerID"));
    EXPECT_TRUE(Checked(window, "optProcessConnect"));
    EXPECT_FALSE(Checked(window, "optProcessEnd"));
    EXPECT_FALSE(Checked(window, "chkWriteLog"));
    EXPECT_TRUE(Checked(window, "chkGlobalEnable"));
    CloseAndDiscard(run, window);
    EXPECT_EQ(OwnValue("txtOutboundMaxLength"), "7");
    EXPECT_EQ(OwnValue("chkFormatCallerID"), "0");
}

TEST_F(WindowRulesTest, SavingStoresWhatTheWindowShows) {
    CloseGoldMine();
    ProgramRun run = Start("");
    const HWND window = Show(run);

    Type(window, "txtCallerIDFormat", L" ##-## ");
    Click(window, "optPhone1Only");
    Click(window, "cmdSaveSettings");

    EXPECT_EQ(OwnValue("txtCallerIDFormat"), " ##-## ");
    EXPECT_EQ(OwnValue("optPhone1Only"), "True");
    EXPECT_EQ(OwnValue("optPhone123"), "False");
    Close(run, window);  // all is saved
}

}  // namespace
}  // namespace end_to_end
