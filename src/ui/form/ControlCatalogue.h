#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace corvane {

enum class ControlKind { Label, TextBox, CheckBox, OptionButton, CommandButton, Frame, TabStrip };

// Place in twips (1/1440 inch), relative to the parent.
struct Place {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
};

// How a control behaves beyond its kind; a set of bits.
namespace ControlTrait {
inline constexpr unsigned none = 0;
inline constexpr unsigned option = 1;      // a user's setting: stored under its name, tag = default
inline constexpr unsigned readOnly = 2;    // a text box that informs
inline constexpr unsigned multiLine = 4;   // a text box of many lines, or a caption that wraps
inline constexpr unsigned plain = 8;       // a frame without border: it only groups
inline constexpr unsigned byDefault = 16;  // the button that Enter presses
inline constexpr unsigned needsGoldMine67 = 32;  // usable with GoldMine 6.7 or later only
inline constexpr unsigned atBottom = 64;         // a caption that ends at its place's lower edge
}  // namespace ControlTrait

// An option's places, from 1, in the order of loading and saving, and in that of restoring
// defaults.
struct Kept {
    int saved = 0;     // 0: it is the log's, see Settings
    int restored = 0;  // 0: it stays as it is
};

// What a text box takes when the user leaves it: a whole number in a range, or any number.
struct NumberCheck {
    std::wstring_view refusal = {};  // what the user is told otherwise
    bool anyNumber = false;          // no whole number is needed, and there is no range
    int lowest = 0;
    int highest = 0;
    bool zeroSwitchesOff = false;        // exactly "0" unchecks the check box that enables this box
    std::wstring_view zeroWarning = {};  // told about a 0 that is taken
};

inline constexpr NumberCheck lengthCheck{
    .refusal = L"Please enter a numeric value from 1 to 20", .lowest = 1, .highest = 20};
inline constexpr NumberCheck secondsCheck{.refusal = L"Please provide a numeric value in seconds",
                                          .anyNumber = true,
                                          .zeroSwitchesOff = true};
inline constexpr NumberCheck durationCheck{
    .refusal = L"Please provide a numeric value between 0 and 99 seconds",
    .highest = 99,
    .zeroWarning =
        L"Setting this to 0 seconds will log every GoldMine interaction. The log file "
        L"will grow quickly."};

// One row describes one control completely; form, settings, window and controls.tsv read this.
struct ControlSpec {
    std::wstring_view name = {};
    int index = 0;  // member of a control array: frames are indexed like their tabs
    ControlKind kind = ControlKind::Label;
    std::wstring_view caption = {};
    std::wstring_view tip = {};
    std::wstring_view tag = {};     // an option's default, as it is stored
    std::wstring_view group = {};   // option buttons of one group exclude each other
    std::wstring_view parent = {};  // name of the containing frame; empty: the window itself
    int parentIndex = 0;
    Place place = {};
    unsigned traits = ControlTrait::none;
    Kept kept = {};                       // of an option
    std::wstring_view enabledBy = {};     // usable while this check box or option is usable and on
    const NumberCheck* number = nullptr;  // of a text box that takes no text but numbers

    [[nodiscard]] constexpr bool has(unsigned trait) const { return (traits & trait) != 0; }

    // The rest of a row, said behind what every row of its kind has.
    [[nodiscard]] constexpr ControlSpec EnabledBy(std::wstring_view control) const {
        ControlSpec spec = *this;
        spec.enabledBy = control;
        return spec;
    }
    [[nodiscard]] constexpr ControlSpec NeedsGoldMine67() const {
        ControlSpec spec = *this;
        spec.traits |= ControlTrait::needsGoldMine67;
        return spec;
    }
    [[nodiscard]] constexpr ControlSpec AtBottom() const {
        ControlSpec spec = *this;
        spec.traits |= ControlTrait::atBottom;
        return spec;
    }
    [[nodiscard]] constexpr ControlSpec Number(const NumberCheck& check) const {
        ControlSpec spec = *this;
        spec.number = &check;
        return spec;
    }
};

// Indexes of the labels beside the parameter, path and registry boxes that change their captions.
namespace ParamLabel {
inline constexpr int goldMinePath = 13;
inline constexpr int crmCallNotifier = 17;
inline constexpr int outboundCallNotifier = 19;
inline constexpr int plugin = 30;
inline constexpr int pluginLogLevel = 32;
inline constexpr int pluginLogPath = 33;
}  // namespace ParamLabel

// Indexes of frameOptions and of the tabs above them.
namespace OptionsTab {
inline constexpr int general = 0;
inline constexpr int callerID = 1;
inline constexpr int history = 2;
inline constexpr int advanced = 3;
inline constexpr int status = 4;
inline constexpr int about = 5;
}  // namespace OptionsTab

namespace ParamsTab {
inline constexpr int fromGoldMine = 0;
inline constexpr int from3CX = 1;
inline constexpr int paths = 2;
inline constexpr int registry = 3;
}  // namespace ParamsTab

// Window sizes in twips.
inline constexpr int windowStartWidth = 7570;
inline constexpr int windowHeight = 7800;
inline constexpr int windowNarrowWidth = 7800;
inline constexpr int windowWideWidth = 13920;

inline constexpr std::wstring_view paramsCaptionClosed = L"&Params >>";
inline constexpr std::wstring_view paramsCaptionOpen = L"<< &Params";

// Control ids count up from here in the order of the table.
inline constexpr int firstControlId = 1001;

namespace catalogue_detail {

constexpr ControlSpec Row(ControlKind kind, std::wstring_view name, std::wstring_view caption,
                          std::wstring_view tip, Place place, unsigned traits) {
    return {.name = name,
            .kind = kind,
            .caption = caption,
            .tip = tip,
            .place = place,
            .traits = traits};
}

constexpr ControlSpec OptionRow(ControlSpec row, std::wstring_view tag, Kept kept) {
    row.tag = tag;
    row.kept = kept;
    row.traits |= ControlTrait::option;
    return row;
}

constexpr ControlSpec Label(std::wstring_view name, int index, std::wstring_view caption,
                            Place place) {
    ControlSpec row = Row(ControlKind::Label, name, caption, {}, place, ControlTrait::none);
    row.index = index;
    return row;
}

constexpr ControlSpec Label(std::wstring_view name, std::wstring_view caption, Place place) {
    return Label(name, 0, caption, place);
}

// A page holds the rows behind it up to the next page or its End, a group those up to its End.
constexpr ControlSpec Group(std::wstring_view name, std::wstring_view caption, Place place,
                            unsigned traits = ControlTrait::none) {
    return Row(ControlKind::Frame, name, caption, {}, place, traits);
}

constexpr ControlSpec Page(std::wstring_view name, int index, std::wstring_view caption,
                           Place place) {
    ControlSpec row = Group(name, caption, place, ControlTrait::plain);
    row.index = index;
    return row;
}

constexpr ControlSpec End() {
    return {};
}

constexpr ControlSpec Check(std::wstring_view name, std::wstring_view caption,
                            std::wstring_view tip, std::wstring_view tag, Kept kept, Place place) {
    return OptionRow(Row(ControlKind::CheckBox, name, caption, tip, place, 0), tag, kept);
}

constexpr ControlSpec Option(std::wstring_view name, std::wstring_view caption,
                             std::wstring_view tip, std::wstring_view tag, std::wstring_view group,
                             Kept kept, Place place, unsigned traits = ControlTrait::none) {
    ControlSpec row = Row(ControlKind::OptionButton, name, caption, tip, place, traits);
    row.group = group;
    return OptionRow(row, tag, kept);
}

constexpr ControlSpec Setting(std::wstring_view name, std::wstring_view tip, std::wstring_view tag,
                              Kept kept, Place place) {
    return OptionRow(Row(ControlKind::TextBox, name, {}, tip, place, 0), tag, kept);
}

constexpr ControlSpec Box(std::wstring_view name, std::wstring_view tip, Place place,
                          unsigned traits = ControlTrait::none) {
    return Row(ControlKind::TextBox, name, {}, tip, place, traits);
}

constexpr ControlSpec Button(std::wstring_view name, std::wstring_view caption,
                             std::wstring_view tip, Place place,
                             unsigned traits = ControlTrait::none) {
    return Row(ControlKind::CommandButton, name, caption, tip, place, traits);
}

constexpr ControlSpec Strip(std::wstring_view name, Place place) {
    return Row(ControlKind::TabStrip, name, {}, {}, place, ControlTrait::none);
}

inline constexpr Place optionsPage{195, 990, 6930, 5460};
inline constexpr Place paramsPage{7635, 990, 5850, 5460};

inline constexpr std::wstring_view options = L"frameOptions";
inline constexpr std::wstring_view params = L"frameParams";

constexpr bool IsPage(const ControlSpec& spec) {
    return spec.name == options || spec.name == params;
}

// The rows with their containers in them, and without the marks that end these.
template <std::size_t count, std::size_t written>
consteval std::array<ControlSpec, count> WithContainers(
    const std::array<ControlSpec, written>& rows) {
    std::array<ControlSpec, count> placed;
    std::array<ControlSpec, 4> open;
    std::size_t depth = 0;
    std::size_t next = 0;
    for (ControlSpec row : rows) {
        if (row.name.empty()) {
            --depth;
            continue;
        }
        if (IsPage(row))
            depth = 0;
        if (depth > 0) {
            row.parent = open[depth - 1].name;
            row.parentIndex = open[depth - 1].index;
        }
        if (row.kind == ControlKind::Frame)
            open[depth++] = row;
        placed[next++] = row;
    }
    return placed;
}

// The order is the tab order: labels stand before their boxes.
consteval auto Rows() {
    using namespace ControlTrait;
    return std::to_array<ControlSpec>({
        Label(L"lblOverview",
              L"Welcome to Halvorn Corvane to 3CX. Set each option below for your environment. "
              L"Hover over an option for help. Press the Save Settings button when done.",
              {120, 60, 7080, 500}),
        Strip(L"tabstripOptions", {120, 600, 7080, 5925}),

        // General
        Page(options, OptionsTab::general, L"General", optionsPage),
        Group(L"frameGlobal", L"Global \"Master Switch\"", {120, 90, 6690, 780}),
        Check(L"chkGlobalEnable", L"Enable link between GoldMine and 3CX",
              L"Uncheck this \"master switch\" to stop Corvane from processing future calls. "
              L"Check it to re-enable call processing.",
              L"1", {1, 0}, {180, 315, 6300, 285}),
        End(),
        Group(L"frameOutboundDialing", L"Outbound Dialing", {120, 1020, 6690, 840}),
        Check(L"chkTrimOutboundPrefix", L"Trim all but the last",
              L"If GoldMine passes in a number for outbound dialing that is longer than this, "
              L"trim digits at the beginning",
              L"1", {2, 1}, {180, 345, 1905, 285}),
        Setting(L"txtOutboundMaxLength",
                L"If GoldMine passes in a number for outbound dialing that is longer than this, "
                L"trim digits at the beginning",
                L"10", {3, 2}, {2115, 330, 480, 315})
            .EnabledBy(L"chkTrimOutboundPrefix")
            .Number(lengthCheck),
        Label(L"lblOutboundMaxLength", L"digits before dialing outbound number",
              {2685, 375, 3825, 255}),

        // CallerID Handling
        Page(options, OptionsTab::callerID, L"CallerID Handling", optionsPage),
        Label(L"lblCallerIDInfo", L"When 3CX provides a CallerID, search in GoldMine as follows:",
              {120, 90, 6690, 255}),
        Label(L"lblCallerIDAddlInfo",
              L"Corvane always searches for CallerID before creating GoldMine history.",
              {120, 345, 6690, 255}),
        Option(L"optPhone1Only", L"Search Phone1 only",
               L"Only search GoldMine's Phone1 field for CallerID", L"False", L"phone fields",
               {4, 3}, {120, 720, 2820, 285}),
        Option(L"optPhone123", L"Search Phone1, Phone2, and Phone3",
               L"Search GoldMine's Phone1, Phone2 and Phone3 fields for CallerID", L"True",
               L"phone fields", {5, 4}, {3000, 720, 3810, 285})
            .NeedsGoldMine67(),
        Check(L"chkSearchInAddlContacts",
              L"Search for CallerID in Additional Contacts if not found in Primary ",
              L"If no primary contact has the CallerID, look for it in the phone and fax numbers "
              L"of Additional Contacts",
              L"0", {6, 5}, {120, 1065, 6690, 285}),
        Check(L"chkIgnoreShortCallerID", L"Ignore invocation from 3CX if CallerID is fewer than ",
              L"Suppress short CallerIDs (e.g. from local extensions)", L"1", {7, 8},
              {120, 1500, 4485, 285}),
        Setting(L"txtCallerIDMinLength", L"Suppress short CallerIDs (e.g. from local extensions)",
                L"6", {8, 9}, {4635, 1485, 480, 315})
            .EnabledBy(L"chkIgnoreShortCallerID")
            .Number(lengthCheck),
        Label(L"lblCallerIDMinLength", L"digits", {5205, 1530, 1200, 255}),
        Check(L"chkFormatCallerID", L"Format CallerID before searching:",
              L"Before searching GoldMine, apply this format to the numeric CallerID", L"1", {9, 6},
              {120, 1875, 3060, 285}),
        Setting(L"txtCallerIDFormat",
                L"Before searching GoldMine, apply this format to the numeric CallerID",
                L"(###)###-####", {10, 7}, {3210, 1860, 2400, 315}),
        Check(L"chkCallerIDIgnoreLeading1", L"Ignore leading \"1\" if CallerID is 11 digits long",
              L"If 3CX passes a leading \"1\" for Country Code = US, but numbers in GoldMine do "
              L"not include the leading \"1\", check this box to triim the leading \"1\" before "
              L"searching in GoldMine.",
              L"1", {11, 10}, {120, 2250, 6690, 285}),
        Check(L"chkCallerIDRemoveSpaces", L"Remove spaces from CallerID",
              L"Drop the spaces that 3CX passes inside a CallerID before searching in GoldMine",
              L"1", {12, 11}, {120, 2595, 6690, 285}),
        Check(L"chkPopOnInboundCall",
              L"Search on inbound call even if not creating GoldMine history:",
              L"Bring up the caller's GoldMine record on every inbound call", L"1", {13, 14},
              {120, 3030, 6690, 285}),
        Group(L"subframePopMoment", L"", {480, 3375, 6330, 300}, plain),
        Option(L"optPopOnInboundCallStart", L"while call is ringing or",
               L"Search when the inbound call starts to ring", L"True", L"pop moment", {14, 15},
               {0, 0, 2460, 285})
            .EnabledBy(L"chkPopOnInboundCall"),
        Option(L"optPopOnInboundCallConnect", L"when you answer the call",
               L"Search when you answer the inbound call", L"False", L"pop moment", {15, 16},
               {2520, 0, 3600, 285})
            .EnabledBy(L"chkPopOnInboundCall"),
        End(),
        Group(L"subframeContactWindow", L"", {120, 3780, 6690, 375}, plain),
        Label(L"lblContactWindow", L"Show GoldMine contact in", {0, 75, 2820, 255}),
        Option(L"optPopCurrentWindow", L"current window",
               L"Show the contact in GoldMine's current contact window", L"False",
               L"contact window", {16, 12}, {2880, 45, 1800, 285}),
        Option(L"optPopNewWindow", L"a new window",
               L"Show the contact in a new GoldMine contact window", L"True", L"contact window",
               {17, 13}, {4740, 45, 1800, 285}),

        // GoldMine History
        Page(options, OptionsTab::history, L"GoldMine History", optionsPage),
        Check(L"chkCreateHistory", L"If contact found, create GoldMine Call History item when call",
              L"Record the call in the history of the GoldMine contact that was found", L"1",
              {21, 17}, {120, 60, 6690, 285}),
        Group(L"subframeHistoryMoment", L"", {480, 375, 6330, 300}, plain),
        Option(L"optProcessStart", L"starts", L"Create the history item when the call starts",
               L"False", L"history moment", {18, 18}, {0, 0, 1020, 285})
            .EnabledBy(L"chkCreateHistory"),
        Option(L"optProcessConnect", L"connects or",
               L"Create the history item when the call is connected", L"True", L"history moment",
               {19, 19}, {1080, 0, 1380, 285})
            .EnabledBy(L"chkCreateHistory"),
        Option(L"optProcessEnd", L"ends", L"Create the history item when the call ends", L"False",
               L"history moment", {20, 20}, {2520, 0, 1500, 285})
            .EnabledBy(L"chkCreateHistory"),
        End(),
        Check(L"chkFillInRef", L"Fill in Ref with text showing incoming/outgoing and CallerID",
              L"Fill in the history item's Reference, e.g. Ended incoming call from (555)123-4567",
              L"1", {29, 21}, {120, 750, 6690, 285})
            .EnabledBy(L"chkCreateHistory"),
        Check(L"chkAutoOpenHistory", L"Automatically open history item for editing",
              L"Open the history item so that you can complete it. Requires GoldMine 6.7 or later.",
              L"1", {30, 22}, {120, 1080, 6690, 285})
            .EnabledBy(L"chkCreateHistory")
            .NeedsGoldMine67(),
        Group(L"subframeHistorySequence", L"Open History", {420, 1410, 6390, 2160}),
        Option(L"optOpenHistoryBeforeSaving", L"Open before saving in history",
               L"Open GoldMine's Complete Call dialog; the item is saved when you complete it",
               L"True", L"history sequence", {31, 23}, {180, 270, 6000, 285})
            .EnabledBy(L"chkAutoOpenHistory"),
        Group(L"subFrameHistoryType", L"", {540, 570, 5730, 1170}, plain),
        Option(L"optCompleteCallByType",
               L"Complete Scheduled Call on outbound calls and  Unscheduled Call on inbound calls",
               L"Choose GoldMine's Complete Call dialog by the direction of the call", L"True",
               L"history type", {33, 24}, {0, 0, 5730, 500}, multiLine),
        Option(L"optCompleteScheduledCall", L"Always complete Scheduled Call",
               L"Complete a call that is scheduled in GoldMine's calendar", L"False",
               L"history type", {34, 25}, {0, 525, 5730, 285})
            .EnabledBy(L"optOpenHistoryBeforeSaving"),
        Option(L"optCompleteUnscheduledCall", L"Always complete Unscheduled Call",
               L"Complete a call that is not scheduled in GoldMine's calendar", L"False",
               L"history type", {35, 26}, {0, 840, 5730, 285})
            .EnabledBy(L"optOpenHistoryBeforeSaving"),
        End(),
        Option(L"optOpenHistoryAfterSaving",
               L"Save as Unscheduled Call first, then open for editing",
               L"Save the history item at once, then open it", L"False", L"history sequence",
               {32, 27}, {180, 1770, 6000, 285})
            .EnabledBy(L"chkAutoOpenHistory"),
        End(),
        Check(L"chkCreateLink",
              L"In history item's Notes, add link to most recent file in this folder:",
              L"When creating the call history item, include a link in the Notes field to the "
              L"most recent file in the specified directory. If the Notes field already contains "
              L"text, insert the link before the existing text.",
              L"0", {22, 28}, {120, 3660, 6690, 285})
            .EnabledBy(L"chkCreateHistory"),
        Setting(L"txtLinkedItemPath",
                L"Specify a folder name e.g. \\\\Server\\Share\\Folder or X:\\Folder", L"",
                {23, 29}, {420, 3975, 6390, 315})
            .EnabledBy(L"chkCreateLink"),
        Check(L"chkDelayAddingLink", L"Delay adding link for",
              L"Wait so that 3CX can create the recording before the folder is searched", L"1",
              {24, 30}, {420, 4365, 2025, 285})
            .EnabledBy(L"chkCreateLink"),
        Setting(L"txtDelayAddingLinkSeconds",
                L"Wait so that 3CX can create the recording before the folder is searched", L"3",
                {25, 31}, {2475, 4350, 600, 315})
            .EnabledBy(L"chkDelayAddingLink")
            .Number(secondsCheck),
        Label(L"lblDelayAddingLinkSeconds", L"seconds (give 3CX time to create)",
              {3165, 4395, 3645, 255})
            .EnabledBy(L"chkCreateLink"),
        Check(L"chkConfirmRecentRecordingFile", L"Only add link if file was created in the last",
              L"Do not link a recording that is too old to belong to this call", L"1", {26, 32},
              {420, 4725, 3765, 285})
            .EnabledBy(L"chkCreateLink"),
        Setting(L"txtRecordingFileMaxAgeSeconds",
                L"Do not link a recording that is too old to belong to this call", L"20", {27, 33},
                {4215, 4710, 600, 315})
            .EnabledBy(L"chkConfirmRecentRecordingFile")
            .Number(secondsCheck),
        Label(L"lblRecordingFileMaxAgeSeconds", L"seconds", {4905, 4755, 1500, 255})
            .EnabledBy(L"chkCreateLink"),
        Check(L"chkConfirmLinkCallIdentifier",
              L"Only add link if file name includes the 3CX Call Identifier no.",
              L"Only link a recording whose path holds the 3CX Call Identifier in round brackets",
              L"0", {28, 34}, {420, 5085, 6390, 285})
            .EnabledBy(L"chkCreateLink"),

        // Advanced
        Page(options, OptionsTab::advanced, L"Advanced", optionsPage),
        Check(L"chkAlwaysShowForm", L"Always show form",
              L"Show this form every time Corvane to 3CX runs. For troubleshooting.", L"0",
              {36, 35}, {120, 120, 6690, 285}),
        Check(L"chkAutoProcess", L"Auto-process call if form shown",
              L"Process the call at once when this form is shown for it. Otherwise the Process "
              L"Call button does.",
              L"1", {37, 36}, {420, 465, 6390, 285})
            .EnabledBy(L"chkAlwaysShowForm"),
        Group(L"frameDebugging", L"Debugging", {120, 960, 6690, 1230}),
        Check(L"chkWriteLog", L"Write Status messages to a log file",
              L"Write Status messages to a log file", L"0", {0, 37}, {180, 315, 6300, 285}),
        Check(L"chkLogCOMCalls", L"Log GoldMine interactions longer than",
              L"Write a Status message for each GoldMine command that takes this long or longer",
              L"1", {38, 38}, {180, 720, 3495, 285}),
        Setting(L"txtCOMDurationSeconds",
                L"Write a Status message for each GoldMine command that takes this long or longer",
                L"1", {39, 39}, {3705, 705, 480, 315})
            .Number(durationCheck),
        Label(L"lblCOMDurationSeconds", L"seconds", {4275, 750, 1500, 255}),

        // Status and About
        Page(options, OptionsTab::status, L"Status", optionsPage),
        Box(L"txtStatus", L"", {60, 60, 6810, 5340}, readOnly | multiLine),
        Page(options, OptionsTab::about, L"About", optionsPage),
        Box(L"txtAbout", L"", {60, 60, 6810, 5340}, readOnly | multiLine),
        End(),

        // Buttons
        Button(L"cmdParams", paramsCaptionClosed,
               L"Show parameters and other detailed program information", {120, 6660, 1320, 375}),
        Button(L"cmdDefaults", L"Restore &Defaults", L"Restore the default settings",
               {1500, 6660, 1560, 375}),
        Button(L"cmdSaveSettings", L"&Save Settings",
               L"Save the settings you made on this form and use them on all future calls",
               {3120, 6660, 1440, 375}),
        Button(L"cmdProcessCall", L"Process &Call",
               L"Process the inbound or outbound call based on the specified parameters",
               {4620, 6660, 1320, 375}, byDefault),
        Button(L"cmdExit", L"E&xit", L"Close the program", {6000, 6660, 1200, 375}),

        // Params from GoldMine
        Strip(L"tabstripParams", {7560, 600, 6000, 5925}),
        Page(params, ParamsTab::fromGoldMine, L"Params from GoldMine", paramsPage),
        Label(L"lblParam", L"Outbound Phone:", {120, 165, 2040, 255}),
        Box(L"txtOutboundPhone", L"Number to dial", {2220, 120, 3450, 315}),
        Label(L"lblParam", 1, L"Outbound to Dial:", {120, 570, 2040, 255}),
        Box(L"txtOutboundPhoneAsDialed", L"Excludes prefix, dashes, etc.", {2220, 525, 3450, 315}),
        Label(L"lblParamsGoldMineInfo",
              L"GoldMine starts this program with the number to dial when you dial from a contact.",
              {120, 1020, 5550, 510}),

        // Params from 3CX
        Page(params, ParamsTab::from3CX, L"Params from 3CX", paramsPage),
        Label(L"lblParam", 2, L"Notification Type:", {120, 165, 2040, 255}),
        Box(L"txtNotifType", L"S/C/E = Started / Connected / Ended", {2220, 120, 600, 315}),
        Label(L"lblParam", 3, L"Caller ID:", {120, 570, 2040, 255}),
        Box(L"txtCallerID", L"Incoming/outgoing phone no.", {2220, 525, 3450, 315}),
        Label(L"lblParam", 4, L"Call Type:", {120, 975, 2040, 255}),
        Box(L"txtCallType", L"I/O = Inbound / Outbound", {2220, 930, 600, 315}),
        Label(L"lblParam", 5, L"Call Identifier:", {120, 1380, 2040, 255}),
        Box(L"txtCallIdentifier", L"Unique call identification number from 3CX",
            {2220, 1335, 3450, 315}),
        Label(L"lblParam", 6, L"Caller ID Digits:", {120, 1785, 2040, 255}),
        Box(L"txtCallerIDDigits", L"Excludes dashes, etc.", {2220, 1740, 3450, 315}),
        Label(L"lblParam", 7, L"Formatted Caller ID:", {120, 2190, 2040, 255}),
        Box(L"txtCallerIDFormatted", L"Used to search in GoldMine", {2220, 2145, 3450, 315}),

        // Paths
        Page(params, ParamsTab::paths, L"Paths", paramsPage),
        Label(L"lblParam", 12, L"Path to this program:", {120, 60, 5610, 255}),
        Box(L"txtAppPath", L"", {120, 315, 5610, 315}, readOnly),
        Label(L"lblParam", ParamLabel::goldMinePath,
              L"Path to GoldMine installation (including gmw.exe):", {120, 705, 5610, 255}),
        Box(L"txtGMInstallDir", L"", {120, 960, 5610, 315}, readOnly),
        Label(L"lblParam", 14, L"Path to GoldMine <user>.INI file:", {120, 1350, 5610, 255}),
        Box(L"txtGoldMineUserIniPath", L"", {120, 1605, 4560, 315}, readOnly),
        Button(L"cmdOpenUserINI", L"Open", L"Open the GoldMine <user>.INI file",
               {4770, 1605, 960, 315}),
        Label(L"lblParam", 15, L"Path to GoldMine GM.INI file:", {120, 1995, 5610, 255}),
        Box(L"txtGoldMineGMIniPath", L"", {120, 2250, 4560, 315}, readOnly),
        Button(L"cmdOpenGMINI", L"Open", L"Open the GoldMine GM.INI file", {4770, 2250, 960, 315}),
        Label(L"lblParam", 16, L"Path to this program's log file:", {120, 2640, 5610, 255}),
        Box(L"txtLogPath", L"", {120, 2895, 4560, 315}, readOnly),
        Button(L"cmdOpenLog", L"Open", L"Open this program's log file", {4770, 2895, 960, 315}),
        Label(L"lblParam", ParamLabel::pluginLogLevel, L"3CX Command Line API Plugin log level:",
              {120, 3285, 5610, 500})
            .AtBottom(),
        Box(L"txtCommandLineAPILogLevel", L"", {120, 3800, 2340, 315}, readOnly),
        Button(L"cmdChangeLogLevel", L"Set to log AllEvents",
               L"Change how much the 3CX Command Line API Plugin logs", {2550, 3800, 3180, 315}),
        Label(L"lblParam", ParamLabel::pluginLogPath,
              L"Path to 3CX Command Line API Plugin log file:", {120, 4190, 5610, 500})
            .AtBottom(),
        Box(L"txtCommandLineAPILogPath", L"", {120, 4705, 4560, 315}, readOnly),
        Button(L"cmdOpenPluginLog", L"Open", L"Open the 3CX Command Line API Plugin log file",
               {4770, 4705, 960, 315}),

        // Registry
        Page(params, ParamsTab::registry, L"Registry", paramsPage),
        Label(L"lbl3CXInfo", L"", {120, 90, 5610, 255}),
        Label(L"lblParam", ParamLabel::crmCallNotifier,
              L"3CX calls this program to handle inbound and outbound call events:",
              {120, 465, 5610, 500})
            .AtBottom(),
        Box(L"txt3CXCRMCallNotifierPath", L"", {120, 980, 5610, 315}, readOnly),
        Label(L"lblParam", ParamLabel::outboundCallNotifier,
              L"CorvaneTo3CX calls this program to dial out via 3CX:", {120, 1380, 5610, 750})
            .AtBottom(),
        Box(L"txt3CXOutboundCallNotifierPath", L"", {120, 2145, 5610, 315}, readOnly),
        Label(L"lblParam", ParamLabel::plugin, L"3CX uses this plugin to call CorvaneTo3CX.exe:",
              {120, 2565, 5610, 750})
            .AtBottom(),
        Box(L"txtCommandLineAPIPluginDLLPath", L"", {120, 3330, 5610, 315}, readOnly),
    });
}

consteval std::size_t RowCount() {
    const auto isRow = [](const ControlSpec& row) { return !row.name.empty(); };
    return static_cast<std::size_t>(std::ranges::count_if(Rows(), isRow));
}

}  // namespace catalogue_detail

inline constexpr auto controlCatalogue =
    catalogue_detail::WithContainers<catalogue_detail::RowCount()>(catalogue_detail::Rows());

inline constexpr std::size_t controlCount = controlCatalogue.size();
inline constexpr std::size_t noControl = static_cast<std::size_t>(-1);

// Position in the table, or noControl.
constexpr std::size_t FindControl(std::wstring_view name, int index = 0) {
    for (std::size_t row = 0; row < controlCatalogue.size(); ++row) {
        if (controlCatalogue[row].name == name && controlCatalogue[row].index == index)
            return row;
    }
    return noControl;
}

// The same at run time. Only one file of the program holds the table with its texts; the others ask
// for a row, which keeps the program small.
[[nodiscard]] const ControlSpec& SpecOf(std::size_t row);
[[nodiscard]] std::size_t RowOfControl(std::wstring_view name, int index = 0);

constexpr int ControlId(std::size_t row) {
    return firstControlId + static_cast<int>(row);
}

}  // namespace corvane
