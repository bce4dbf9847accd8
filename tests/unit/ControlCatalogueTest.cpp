#include "ui/form/ControlCatalogue.h"

#include <gtest/gtest.h>

#include <ostream>
#include <set>
#include <string>
#include <vector>

// For itself: the names of all kinds of controls would be in the way of other tests.
namespace corvane::test::control_catalogue {
namespace {

using enum ControlKind;

// What the window must hold. Written by hand, apart from the program's own table.
struct ExpectedControl {
    std::wstring name;
    int index;
    ControlKind kind;
    std::wstring caption;
    std::wstring tip;    // "*": left open
    std::wstring tab;    // "frameOptions 1": the page that it stands on, directly or not
    std::wstring group;  // the frame that it stands in; empty: the page itself
};

void PrintTo(const ExpectedControl& control, std::ostream* out) {
    *out << std::string(control.name.begin(), control.name.end()) << ' ' << control.index;
}

const std::wstring trimTip =
    L"If GoldMine passes in a number for outbound dialing that is longer than this, trim digits at "
    L"the beginning";
const std::wstring shortTip = L"Suppress short CallerIDs (e.g. from local extensions)";
const std::wstring formatTip =
    L"Before searching GoldMine, apply this format to the numeric CallerID";

const std::vector<ExpectedControl> generalTab = {
    {L"frameGlobal", 0, Frame, L"Global \"Master Switch\"", L"*", L"frameOptions 0", L""},
    {L"chkGlobalEnable", 0, CheckBox, L"Enable link between GoldMine and 3CX",
     L"Uncheck this \"master switch\" to stop Corvane from processing future calls. Check it to "
     L"re-enable call processing.",
     L"frameOptions 0", L"frameGlobal"},
    {L"frameOutboundDialing", 0, Frame, L"Outbound Dialing", L"*", L"frameOptions 0", L""},
    {L"chkTrimOutboundPrefix", 0, CheckBox, L"Trim all but the last", trimTip, L"frameOptions 0",
     L"frameOutboundDialing"},
    {L"txtOutboundMaxLength", 0, TextBox, L"", trimTip, L"frameOptions 0", L"frameOutboundDialing"},
    {L"lblOutboundMaxLength", 0, Label, L"digits before dialing outbound number", L"*",
     L"frameOptions 0", L"frameOutboundDialing"},
};

const std::vector<ExpectedControl> callerIDTab = {
    {L"lblCallerIDInfo", 0, Label, L"When 3CX provides a CallerID, search in GoldMine as follows:",
     L"*", L"frameOptions 1", L""},
    {L"lblCallerIDAddlInfo", 0, Label,
     L"Corvane always searches for CallerID before creating GoldMine history.", L"*",
     L"frameOptions 1", L""},
    {L"optPhone1Only", 0, OptionButton, L"Search Phone1 only",
     L"Only search GoldMine's Phone1 field for CallerID", L"frameOptions 1", L""},
    {L"optPhone123", 0, OptionButton, L"Search Phone1, Phone2, and Phone3",
     L"Search GoldMine's Phone1, Phone2 and Phone3 fields for CallerID", L"frameOptions 1", L""},
    {L"chkSearchInAddlContacts", 0, CheckBox,
     L"Search for CallerID in Additional Contacts if not found in Primary ", L"*",
     L"frameOptions 1", L""},
    {L"chkIgnoreShortCallerID", 0, CheckBox,
     L"Ignore invocation from 3CX if CallerID is fewer than ", shortTip, L"frameOptions 1", L""},
    {L"txtCallerIDMinLength", 0, TextBox, L"", shortTip, L"frameOptions 1", L""},
    {L"lblCallerIDMinLength", 0, Label, L"digits", L"*", L"frameOptions 1", L""},
    {L"chkFormatCallerID", 0, CheckBox, L"Format CallerID before searching:", formatTip,
     L"frameOptions 1", L""},
    {L"txtCallerIDFormat", 0, TextBox, L"", formatTip, L"frameOptions 1", L""},
    {L"chkCallerIDIgnoreLeading1", 0, CheckBox,
     L"Ignore leading \"1\" if CallerID is 11 digits long",
     L"If 3CX passes a leading \"1\" for Country Code = US, but numbers in GoldMine do not include "
     L"the leading \"1\", check this box to triim the leading \"1\" before searching in GoldMine.",
     L"frameOptions 1", L""},
    {L"chkCallerIDRemoveSpaces", 0, CheckBox, L"Remove spaces from CallerID", L"*",
     L"frameOptions 1", L""},
    {L"chkPopOnInboundCall", 0, CheckBox,
     L"Search on inbound call even if not creating GoldMine history:", L"*", L"frameOptions 1",
     L""},
    {L"optPopOnInboundCallStart", 0, OptionButton, L"while call is ringing or", L"*",
     L"frameOptions 1", L"subframePopMoment"},
    {L"optPopOnInboundCallConnect", 0, OptionButton, L"when you answer the call", L"*",
     L"frameOptions 1", L"subframePopMoment"},
    {L"lblContactWindow", 0, Label, L"Show GoldMine contact in", L"*", L"frameOptions 1",
     L"subframeContactWindow"},
    {L"optPopCurrentWindow", 0, OptionButton, L"current window", L"*", L"frameOptions 1",
     L"subframeContactWindow"},
    {L"optPopNewWindow", 0, OptionButton, L"a new window", L"*", L"frameOptions 1",
     L"subframeContactWindow"},
};

const std::wstring linkTip =
    L"When creating the call history item, include a link in the Notes field to the most recent "
    L"file in the specified directory. If the Notes field already contains text, insert the link "
    L"before the existing text.";

const std::vector<ExpectedControl> historyTab = {
    {L"chkCreateHistory", 0, CheckBox,
     L"If contact found, create GoldMine Call History item when call", L"*", L"frameOptions 2",
     L""},
    {L"optProcessStart", 0, OptionButton, L"starts", L"*", L"frameOptions 2",
     L"subframeHistoryMoment"},
    {L"optProcessConnect", 0, OptionButton, L"connects or", L"*", L"frameOptions 2",
     L"subframeHistoryMoment"},
    {L"optProcessEnd", 0, OptionButton, L"ends", L"*", L"frameOptions 2", L"subframeHistoryMoment"},
    {L"chkFillInRef", 0, CheckBox, L"Fill in Ref with text showing incoming/outgoing and CallerID",
     L"*", L"frameOptions 2", L""},
    {L"chkAutoOpenHistory", 0, CheckBox, L"Automatically open history item for editing", L"*",
     L"frameOptions 2", L""},
    {L"subframeHistorySequence", 0, Frame, L"Open History", L"*", L"frameOptions 2", L""},
    {L"optOpenHistoryBeforeSaving", 0, OptionButton, L"Open before saving in history", L"*",
     L"frameOptions 2", L"subframeHistorySequence"},
    {L"optOpenHistoryAfterSaving", 0, OptionButton,
     L"Save as Unscheduled Call first, then open for editing", L"*", L"frameOptions 2",
     L"subframeHistorySequence"},
    {L"optCompleteCallByType", 0, OptionButton,
     L"Complete Scheduled Call on outbound calls and  Unscheduled Call on inbound calls", L"*",
     L"frameOptions 2", L"subFrameHistoryType"},
    {L"optCompleteScheduledCall", 0, OptionButton, L"Always complete Scheduled Call", L"*",
     L"frameOptions 2", L"subFrameHistoryType"},
    {L"optCompleteUnscheduledCall", 0, OptionButton, L"Always complete Unscheduled Call", L"*",
     L"frameOptions 2", L"subFrameHistoryType"},
    {L"chkCreateLink", 0, CheckBox,
     L"In history item's Notes, add link to most recent file in this folder:", linkTip,
     L"frameOptions 2", L""},
    {L"txtLinkedItemPath", 0, TextBox, L"",
     L"Specify a folder name e.g. \\\\Server\\Share\\Folder or X:\\Folder", L"frameOptions 2", L""},
    {L"chkDelayAddingLink", 0, CheckBox, L"Delay adding link for", L"*", L"frameOptions 2", L""},
    {L"txtDelayAddingLinkSeconds", 0, TextBox, L"", L"*", L"frameOptions 2", L""},
    {L"lblDelayAddingLinkSeconds", 0, Label, L"seconds (give 3CX time to create)", L"*",
     L"frameOptions 2", L""},
    {L"chkConfirmRecentRecordingFile", 0, CheckBox,
     L"Only add link if file was created in the last", L"*", L"frameOptions 2", L""},
    {L"txtRecordingFileMaxAgeSeconds", 0, TextBox, L"", L"*", L"frameOptions 2", L""},
    {L"lblRecordingFileMaxAgeSeconds", 0, Label, L"seconds", L"*", L"frameOptions 2", L""},
    {L"chkConfirmLinkCallIdentifier", 0, CheckBox,
     L"Only add link if file name includes the 3CX Call Identifier no.", L"*", L"frameOptions 2",
     L""},
};

const std::vector<ExpectedControl> otherOptionTabs = {
    {L"chkAlwaysShowForm", 0, CheckBox, L"Always show form",
     L"Show this form every time Corvane to 3CX runs. For troubleshooting.", L"frameOptions 3",
     L""},
    {L"chkAutoProcess", 0, CheckBox, L"Auto-process call if form shown", L"*", L"frameOptions 3",
     L""},
    {L"frameDebugging", 0, Frame, L"Debugging", L"*", L"frameOptions 3", L""},
    {L"chkWriteLog", 0, CheckBox, L"Write Status messages to a log file", L"*", L"frameOptions 3",
     L"frameDebugging"},
    {L"chkLogCOMCalls", 0, CheckBox, L"Log GoldMine interactions longer than", L"*",
     L"frameOptions 3", L"frameDebugging"},
    {L"txtCOMDurationSeconds", 0, TextBox, L"", L"*", L"frameOptions 3", L"frameDebugging"},
    {L"lblCOMDurationSeconds", 0, Label, L"seconds", L"*", L"frameOptions 3", L"frameDebugging"},
    {L"txtStatus", 0, TextBox, L"", L"*", L"frameOptions 4", L""},
    {L"txtAbout", 0, TextBox, L"", L"*", L"frameOptions 5", L""},
};

const std::vector<ExpectedControl> paramTabs = {
    {L"txtOutboundPhone", 0, TextBox, L"", L"Number to dial", L"frameParams 0", L""},
    {L"txtOutboundPhoneAsDialed", 0, TextBox, L"", L"Excludes prefix, dashes, etc.",
     L"frameParams 0", L""},
    {L"txtNotifType", 0, TextBox, L"", L"S/C/E = Started / Connected / Ended", L"frameParams 1",
     L""},
    {L"txtCallerID", 0, TextBox, L"", L"Incoming/outgoing phone no.", L"frameParams 1", L""},
    {L"txtCallType", 0, TextBox, L"", L"I/O = Inbound / Outbound", L"frameParams 1", L""},
    {L"txtCallIdentifier", 0, TextBox, L"", L"Unique call identification number from 3CX",
     L"frameParams 1", L""},
    {L"txtCallerIDDigits", 0, TextBox, L"", L"Excludes dashes, etc.", L"frameParams 1", L""},
    {L"txtCallerIDFormatted", 0, TextBox, L"", L"Used to search in GoldMine", L"frameParams 1",
     L""},
    {L"txtAppPath", 0, TextBox, L"", L"*", L"frameParams 2", L""},
    {L"txtGMInstallDir", 0, TextBox, L"", L"*", L"frameParams 2", L""},
    {L"txtGoldMineUserIniPath", 0, TextBox, L"", L"*", L"frameParams 2", L""},
    {L"cmdOpenUserINI", 0, CommandButton, L"Open", L"*", L"frameParams 2", L""},
    {L"txtGoldMineGMIniPath", 0, TextBox, L"", L"*", L"frameParams 2", L""},
    {L"cmdOpenGMINI", 0, CommandButton, L"Open", L"*", L"frameParams 2", L""},
    {L"txtLogPath", 0, TextBox, L"", L"*", L"frameParams 2", L""},
    {L"cmdOpenLog", 0, CommandButton, L"Open", L"*", L"frameParams 2", L""},
    {L"txtCommandLineAPILogLevel", 0, TextBox, L"", L"*", L"frameParams 2", L""},
    {L"cmdChangeLogLevel", 0, CommandButton, L"Set to log AllEvents", L"*", L"frameParams 2", L""},
    {L"txtCommandLineAPILogPath", 0, TextBox, L"", L"*", L"frameParams 2", L""},
    {L"cmdOpenPluginLog", 0, CommandButton, L"Open", L"*", L"frameParams 2", L""},
    {L"txt3CXCRMCallNotifierPath", 0, TextBox, L"", L"*", L"frameParams 3", L""},
    {L"txt3CXOutboundCallNotifierPath", 0, TextBox, L"", L"*", L"frameParams 3", L""},
    {L"txtCommandLineAPIPluginDLLPath", 0, TextBox, L"", L"*", L"frameParams 3", L""},
    {L"lbl3CXInfo", 0, Label, L"", L"*", L"frameParams 3", L""},
};

const std::vector<ExpectedControl> besidesTheTabs = {
    {L"lblOverview", 0, Label,
     L"Welcome to Halvorn Corvane to 3CX. Set each option below for your environment. Hover over "
     L"an option for help. Press the Save Settings button when done.",
     L"*", L"", L""},
    {L"tabstripOptions", 0, TabStrip, L"", L"*", L"", L""},
    {L"tabstripParams", 0, TabStrip, L"", L"*", L"", L""},
    {L"frameOptions", 0, Frame, L"General", L"*", L"", L""},
    {L"frameOptions", 1, Frame, L"CallerID Handling", L"*", L"", L""},
    {L"frameOptions", 2, Frame, L"GoldMine History", L"*", L"", L""},
    {L"frameOptions", 3, Frame, L"Advanced", L"*", L"", L""},
    {L"frameOptions", 4, Frame, L"Status", L"*", L"", L""},
    {L"frameOptions", 5, Frame, L"About", L"*", L"", L""},
    {L"frameParams", 0, Frame, L"Params from GoldMine", L"*", L"", L""},
    {L"frameParams", 1, Frame, L"Params from 3CX", L"*", L"", L""},
    {L"frameParams", 2, Frame, L"Paths", L"*", L"", L""},
    {L"frameParams", 3, Frame, L"Registry", L"*", L"", L""},
    {L"cmdParams", 0, CommandButton, L"&Params >>",
     L"Show parameters and other detailed program information", L"", L""},
    {L"cmdDefaults", 0, CommandButton, L"Restore &Defaults", L"Restore the default settings", L"",
     L""},
    {L"cmdSaveSettings", 0, CommandButton, L"&Save Settings",
     L"Save the settings you made on this form and use them on all future calls", L"", L""},
    {L"cmdProcessCall", 0, CommandButton, L"Process &Call",
     L"Process the inbound or outbound call based on the specified parameters", L"", L""},
    {L"cmdExit", 0, CommandButton, L"E&xit", L"Close the program", L"", L""},
};

const ControlSpec* ParentOf(const ControlSpec& spec) {
    return spec.parent.empty() ? nullptr
                               : &controlCatalogue[FindControl(spec.parent, spec.parentIndex)];
}

// "frameOptions 1", or nothing for what stands beside the tabs.
std::wstring TabOf(const ControlSpec& spec) {
    const ControlSpec* outermost = &spec;
    while (const ControlSpec* parent = ParentOf(*outermost))
        outermost = parent;
    if (outermost == &spec)
        return {};
    return std::wstring(outermost->name) + L" " + std::to_wstring(outermost->index);
}

std::wstring DescriptionOf(const ControlSpec& spec) {
    return std::wstring(spec.name) + L" " + std::to_wstring(spec.index);
}

class ControlTest : public testing::TestWithParam<ExpectedControl> {};

TEST_P(ControlTest, IsThereAsItMustBe) {
    const ExpectedControl& expected = GetParam();

    const std::size_t row = FindControl(expected.name, expected.index);

    ASSERT_NE(row, noControl);
    const ControlSpec& spec = controlCatalogue[row];
    EXPECT_EQ(spec.kind, expected.kind);
    EXPECT_EQ(spec.caption, expected.caption);
    if (expected.tip != L"*") {
        EXPECT_EQ(spec.tip, expected.tip);
    }
    EXPECT_EQ(TabOf(spec), expected.tab);
    if (!expected.tab.empty()) {
        const std::wstring page = expected.tab.substr(0, expected.tab.find(L' '));
        EXPECT_EQ(spec.parent, expected.group.empty() ? page : expected.group);
    }
}

INSTANTIATE_TEST_SUITE_P(General, ControlTest, testing::ValuesIn(generalTab));
INSTANTIATE_TEST_SUITE_P(CallerID, ControlTest, testing::ValuesIn(callerIDTab));
INSTANTIATE_TEST_SUITE_P(History, ControlTest, testing::ValuesIn(historyTab));
INSTANTIATE_TEST_SUITE_P(OtherTabs, ControlTest, testing::ValuesIn(otherOptionTabs));
INSTANTIATE_TEST_SUITE_P(Params, ControlTest, testing::ValuesIn(paramTabs));
INSTANTIATE_TEST_SUITE_P(Window, ControlTest, testing::ValuesIn(besidesTheTabs));

TEST(ControlCatalogueTest, BoxesOfParametersAndPathsHaveTheirLabelsInFront) {
    const std::pair<std::wstring, std::wstring> labels[] = {
        {L"txtOutboundPhone", L"Outbound Phone:"},
        {L"txtOutboundPhoneAsDialed", L"Outbound to Dial:"},
        {L"txtNotifType", L"Notification Type:"},
        {L"txtCallerID", L"Caller ID:"},
        {L"txtCallType", L"Call Type:"},
        {L"txtCallIdentifier", L"Call Identifier:"},
        {L"txtCallerIDDigits", L"Caller ID Digits:"},
        {L"txtCallerIDFormatted", L"Formatted Caller ID:"},
        {L"txtAppPath", L"Path to this program:"},
        {L"txtGMInstallDir", L"Path to GoldMine installation (including gmw.exe):"},
        {L"txtGoldMineUserIniPath", L"Path to GoldMine <user>.INI file:"},
        {L"txtGoldMineGMIniPath", L"Path to GoldMine GM.INI file:"},
        {L"txtLogPath", L"Path to this program's log file:"},
        {L"txtCommandLineAPILogLevel", L"3CX Command Line API Plugin log level:"},
        {L"txtCommandLineAPILogPath", L"Path to 3CX Command Line API Plugin log file:"},
    };
    for (const auto& [box, caption] : labels) {
        const std::size_t row = FindControl(box);
        ASSERT_NE(row, noControl) << box;
        ASSERT_GT(row, 0u);
        const ControlSpec& label = controlCatalogue[row - 1];
        EXPECT_EQ(label.kind, Label) << box;
        EXPECT_EQ(label.name, L"lblParam") << box;
        EXPECT_EQ(label.caption, caption);
    }
}

TEST(ControlCatalogueTest, TheInformationOnGoldMinesParametersStandsOnTheirPage) {
    const std::size_t row = FindControl(L"lblParamsGoldMineInfo");

    ASSERT_NE(row, noControl);
    EXPECT_EQ(TabOf(controlCatalogue[row]), L"frameParams 0");
    EXPECT_FALSE(controlCatalogue[row].caption.empty());
}

TEST(ControlCatalogueTest, TheLabelsThatChangeHaveTheirNumbers) {
    const std::pair<int, std::wstring> labels[] = {
        {13, L"txtGMInstallDir"},
        {17, L"txt3CXCRMCallNotifierPath"},
        {19, L"txt3CXOutboundCallNotifierPath"},
        {30, L"txtCommandLineAPIPluginDLLPath"},
        {32, L"txtCommandLineAPILogLevel"},
        {33, L"txtCommandLineAPILogPath"},
    };
    for (const auto& [index, box] : labels) {
        const std::size_t row = FindControl(L"lblParam", index);
        ASSERT_NE(row, noControl) << index;
        EXPECT_EQ(controlCatalogue[row + 1].name, box);
    }
}

TEST(ControlCatalogueTest, ThereAreSixTabsOfOptionsAndFourOfParameters) {
    EXPECT_EQ(FindControl(L"frameOptions", 6), noControl);
    EXPECT_EQ(FindControl(L"frameParams", 4), noControl);
    EXPECT_EQ(FindControl(L"frameOptions", -1), noControl);
}

TEST(ControlCatalogueTest, NamesAndNumbersOfControlsAreUnique) {
    std::set<std::wstring> names;
    std::set<int> ids;
    for (std::size_t row = 0; row < controlCatalogue.size(); ++row) {
        EXPECT_TRUE(names.insert(DescriptionOf(controlCatalogue[row])).second)
            << DescriptionOf(controlCatalogue[row]);
        EXPECT_TRUE(ids.insert(ControlId(row)).second);
        // Enter and Esc have the numbers 1 and 2.
        EXPECT_GT(ControlId(row), 2);
        EXPECT_LE(ControlId(row), 0x7fff);
    }
}

TEST(ControlCatalogueTest, NamesBeginWithTheirKind) {
    const std::pair<ControlKind, std::vector<std::wstring>> prefixes[] = {
        {Label, {L"lbl"}},
        {TextBox, {L"txt"}},
        {CheckBox, {L"chk"}},
        {OptionButton, {L"opt"}},
        {CommandButton, {L"cmd"}},
        {TabStrip, {L"tabstrip"}},
        {Frame, {L"frame", L"subframe", L"subFrame"}},
    };
    for (const ControlSpec& spec : controlCatalogue) {
        for (const auto& [kind, allowed] : prefixes) {
            if (spec.kind != kind)
                continue;
            bool begins = false;
            for (const std::wstring& prefix : allowed)
                begins = begins || spec.name.starts_with(prefix);
            EXPECT_TRUE(begins) << DescriptionOf(spec);
        }
    }
}

TEST(ControlCatalogueTest, EveryOptionAndButtonHasATip) {
    for (const ControlSpec& spec : controlCatalogue) {
        if (spec.has(ControlTrait::option) || spec.kind == CommandButton) {
            EXPECT_FALSE(spec.tip.empty()) << DescriptionOf(spec);
        }
    }
}

TEST(ControlCatalogueTest, ParentsAreFramesThatStandBeforeTheirControls) {
    for (std::size_t row = 0; row < controlCatalogue.size(); ++row) {
        const ControlSpec& spec = controlCatalogue[row];
        if (spec.parent.empty())
            continue;
        const std::size_t parent = FindControl(spec.parent, spec.parentIndex);
        ASSERT_LT(parent, row) << DescriptionOf(spec);
        EXPECT_EQ(controlCatalogue[parent].kind, Frame) << DescriptionOf(spec);
    }
}

TEST(ControlCatalogueTest, EveryPlaceLiesInsideItsParent) {
    for (const ControlSpec& spec : controlCatalogue) {
        const ControlSpec* parent = ParentOf(spec);
        const int width = parent ? parent->place.width : 13920;
        const int height = parent ? parent->place.height : 7800;
        EXPECT_GE(spec.place.left, 0) << DescriptionOf(spec);
        EXPECT_GE(spec.place.top, 0) << DescriptionOf(spec);
        EXPECT_GT(spec.place.width, 0) << DescriptionOf(spec);
        EXPECT_GT(spec.place.height, 0) << DescriptionOf(spec);
        EXPECT_LE(spec.place.left + spec.place.width, width) << DescriptionOf(spec);
        EXPECT_LE(spec.place.top + spec.place.height, height) << DescriptionOf(spec);
    }
}

TEST(ControlCatalogueTest, AllButTheParametersFitIntoTheNarrowestWindow) {
    for (const ControlSpec& spec : controlCatalogue) {
        const bool isParameters = spec.name == L"tabstripParams" || spec.name == L"frameParams";
        if (!spec.parent.empty())
            continue;
        if (isParameters) {
            EXPECT_GE(spec.place.left, 7500) << DescriptionOf(spec);
        } else {
            EXPECT_LE(spec.place.left + spec.place.width, 7570) << DescriptionOf(spec);
        }
    }
}

bool Overlap(const Place& one, const Place& other) {
    return one.left < other.left + other.width && other.left < one.left + one.width &&
           one.top < other.top + other.height && other.top < one.top + one.height;
}

// Pages lie over each other and over their strip.
bool IsPageOrStrip(const ControlSpec& spec) {
    return spec.kind == TabStrip || spec.name == L"frameOptions" || spec.name == L"frameParams";
}

TEST(ControlCatalogueTest, NoTwoNeighboursOverlap) {
    for (std::size_t first = 0; first < controlCatalogue.size(); ++first) {
        for (std::size_t second = first + 1; second < controlCatalogue.size(); ++second) {
            const ControlSpec& one = controlCatalogue[first];
            const ControlSpec& other = controlCatalogue[second];
            if (one.parent != other.parent || one.parentIndex != other.parentIndex)
                continue;
            if (IsPageOrStrip(one) && IsPageOrStrip(other))
                continue;
            EXPECT_FALSE(Overlap(one.place, other.place))
                << DescriptionOf(one) << L" and " << DescriptionOf(other);
        }
    }
}

TEST(ControlCatalogueTest, PagesOfOneStripHaveOnePlaceInsideTheStrip) {
    for (const auto& [strip, pages] : {std::pair(L"tabstripOptions", L"frameOptions"),
                                       std::pair(L"tabstripParams", L"frameParams")}) {
        const Place& outer = controlCatalogue[FindControl(strip)].place;
        const Place& first = controlCatalogue[FindControl(pages, 0)].place;
        EXPECT_GE(first.left, outer.left);
        EXPECT_GE(first.top, outer.top);
        EXPECT_LE(first.left + first.width, outer.left + outer.width);
        EXPECT_LE(first.top + first.height, outer.top + outer.height);
        for (int tab = 1; FindControl(pages, tab) != noControl; ++tab) {
            const Place& page = controlCatalogue[FindControl(pages, tab)].place;
            EXPECT_EQ(page.left, first.left);
            EXPECT_EQ(page.top, first.top);
            EXPECT_EQ(page.width, first.width);
            EXPECT_EQ(page.height, first.height);
        }
    }
}

TEST(ControlCatalogueTest, BoxesThatOnlyInformAreReadOnly) {
    const std::set<std::wstring> readOnly = {
        L"txtStatus",
        L"txtAbout",
        L"txtAppPath",
        L"txtGMInstallDir",
        L"txtGoldMineUserIniPath",
        L"txtGoldMineGMIniPath",
        L"txtLogPath",
        L"txtCommandLineAPILogLevel",
        L"txtCommandLineAPILogPath",
        L"txt3CXCRMCallNotifierPath",
        L"txt3CXOutboundCallNotifierPath",
        L"txtCommandLineAPIPluginDLLPath",
    };
    for (const ControlSpec& spec : controlCatalogue) {
        EXPECT_EQ(spec.has(ControlTrait::readOnly), readOnly.contains(std::wstring(spec.name)))
            << DescriptionOf(spec);
    }
}

TEST(ControlCatalogueTest, TheWindowHasItsSizes) {
    EXPECT_EQ(windowStartWidth, 7570);
    EXPECT_EQ(windowHeight, 7800);
    EXPECT_EQ(windowNarrowWidth, 7800);
    EXPECT_EQ(windowWideWidth, 13920);
}

}  // namespace
}  // namespace corvane::test::control_catalogue
