#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace corvane::test {

enum class OptionKind { Check, Choice, Text };

// What an option must be. Written by hand, apart from the program's own table.
struct ExpectedOption {
    std::wstring name;
    OptionKind kind;
    std::wstring defaultText;
    std::wstring caption;  // of text boxes: empty
};

inline void PrintTo(const ExpectedOption& option, std::ostream* out) {
    *out << std::string(option.name.begin(), option.name.end());
}

// The options in load and save order.
inline const std::vector<ExpectedOption>& ExpectedOptions() {
    using enum OptionKind;
    static const std::vector<ExpectedOption> options = {
        {L"chkGlobalEnable", Check, L"1", L"Enable link between GoldMine and 3CX"},
        {L"chkTrimOutboundPrefix", Check, L"1", L"Trim all but the last"},
        {L"txtOutboundMaxLength", Text, L"10", L""},
        {L"optPhone1Only", Choice, L"False", L"Search Phone1 only"},
        {L"optPhone123", Choice, L"True", L"Search Phone1, Phone2, and Phone3"},
        {L"chkSearchInAddlContacts", Check, L"0",
         L"Search for CallerID in Additional Contacts if not found in Primary "},
        {L"chkIgnoreShortCallerID", Check, L"1",
         L"Ignore invocation from 3CX if CallerID is fewer than "},
        {L"txtCallerIDMinLength", Text, L"6", L""},
        {L"chkFormatCallerID", Check, L"1", L"Format CallerID before searching:"},
        {L"txtCallerIDFormat", Text, L"(###)###-####", L""},
        {L"chkCallerIDIgnoreLeading1", Check, L"1",
         L"Ignore leading \"1\" if CallerID is 11 digits long"},
        {L"chkCallerIDRemoveSpaces", Check, L"1", L"Remove spaces from CallerID"},
        {L"chkPopOnInboundCall", Check, L"1",
         L"Search on inbound call even if not creating GoldMine history:"},
        {L"optPopOnInboundCallStart", Choice, L"True", L"while call is ringing or"},
        {L"optPopOnInboundCallConnect", Choice, L"False", L"when you answer the call"},
        {L"optPopCurrentWindow", Choice, L"False", L"current window"},
        {L"optPopNewWindow", Choice, L"True", L"a new window"},
        {L"optProcessStart", Choice, L"False", L"starts"},
        {L"optProcessConnect", Choice, L"True", L"connects or"},
        {L"optProcessEnd", Choice, L"False", L"ends"},
        {L"chkCreateHistory", Check, L"1",
         L"If contact found, create GoldMine Call History item when call"},
        {L"chkCreateLink", Check, L"0",
         L"In history item's Notes, add link to most recent file in this folder:"},
        {L"txtLinkedItemPath", Text, L"", L""},
        {L"chkDelayAddingLink", Check, L"1", L"Delay adding link for"},
        {L"txtDelayAddingLinkSeconds", Text, L"3", L""},
        {L"chkConfirmRecentRecordingFile", Check, L"1",
         L"Only add link if file was created in the last"},
        {L"txtRecordingFileMaxAgeSeconds", Text, L"20", L""},
        {L"chkConfirmLinkCallIdentifier", Check, L"0",
         L"Only add link if file name includes the 3CX Call Identifier no."},
        {L"chkFillInRef", Check, L"1",
         L"Fill in Ref with text showing incoming/outgoing and CallerID"},
        {L"chkAutoOpenHistory", Check, L"1", L"Automatically open history item for editing"},
        {L"optOpenHistoryBeforeSaving", Choice, L"True", L"Open before saving in history"},
        {L"optOpenHistoryAfterSaving", Choice, L"False",
         L"Save as Unscheduled Call first, then open for editing"},
        {L"optCompleteCallByType", Choice, L"True",
         L"Complete Scheduled Call on outbound calls and  Unscheduled Call on inbound calls"},
        {L"optCompleteScheduledCall", Choice, L"False", L"Always complete Scheduled Call"},
        {L"optCompleteUnscheduledCall", Choice, L"False", L"Always complete Unscheduled Call"},
        {L"chkAlwaysShowForm", Check, L"0", L"Always show form"},
        {L"chkAutoProcess", Check, L"1", L"Auto-process call if form shown"},
        {L"chkLogCOMCalls", Check, L"1", L"Log GoldMine interactions longer than"},
        {L"txtCOMDurationSeconds", Text, L"1", L""},
    };
    return options;
}

}  // namespace corvane::test
