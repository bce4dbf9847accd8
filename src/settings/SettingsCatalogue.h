#pragma once

#include <array>
#include <string_view>

namespace corvane {

// The options in load and save order. An entry's name is its control's name; kind, default and
// caption stand with the control in the control catalogue.
//
// chkWriteLog is not among them: the log loads it before all others, so that the lines of loading
// are already logged as configured, and stores it right after the others were saved.
inline constexpr auto savedOptions = std::to_array<std::wstring_view>({
    L"chkGlobalEnable",
    L"chkTrimOutboundPrefix",
    L"txtOutboundMaxLength",
    L"optPhone1Only",
    L"optPhone123",
    L"chkSearchInAddlContacts",
    L"chkIgnoreShortCallerID",
    L"txtCallerIDMinLength",
    L"chkFormatCallerID",
    L"txtCallerIDFormat",
    L"chkCallerIDIgnoreLeading1",
    L"chkCallerIDRemoveSpaces",
    L"chkPopOnInboundCall",
    L"optPopOnInboundCallStart",
    L"optPopOnInboundCallConnect",
    L"optPopCurrentWindow",
    L"optPopNewWindow",
    L"optProcessStart",
    L"optProcessConnect",
    L"optProcessEnd",
    L"chkCreateHistory",
    L"chkCreateLink",
    L"txtLinkedItemPath",
    L"chkDelayAddingLink",
    L"txtDelayAddingLinkSeconds",
    L"chkConfirmRecentRecordingFile",
    L"txtRecordingFileMaxAgeSeconds",
    L"chkConfirmLinkCallIdentifier",
    L"chkFillInRef",
    L"chkAutoOpenHistory",
    L"optOpenHistoryBeforeSaving",
    L"optOpenHistoryAfterSaving",
    L"optCompleteCallByType",
    L"optCompleteScheduledCall",
    L"optCompleteUnscheduledCall",
    L"chkAlwaysShowForm",
    L"chkAutoProcess",
    L"chkLogCOMCalls",
    L"txtCOMDurationSeconds",
});

// The options that Restore Defaults sets, in its order. The master switch is left as it is.
inline constexpr auto restoredOptions = std::to_array<std::wstring_view>({
    L"chkTrimOutboundPrefix",
    L"txtOutboundMaxLength",
    L"optPhone1Only",
    L"optPhone123",
    L"chkSearchInAddlContacts",
    L"chkFormatCallerID",
    L"txtCallerIDFormat",
    L"chkIgnoreShortCallerID",
    L"txtCallerIDMinLength",
    L"chkCallerIDIgnoreLeading1",
    L"chkCallerIDRemoveSpaces",
    L"optPopCurrentWindow",
    L"optPopNewWindow",
    L"chkPopOnInboundCall",
    L"optPopOnInboundCallStart",
    L"optPopOnInboundCallConnect",
    L"chkCreateHistory",
    L"optProcessStart",
    L"optProcessConnect",
    L"optProcessEnd",
    L"chkFillInRef",
    L"chkAutoOpenHistory",
    L"optOpenHistoryBeforeSaving",
    L"optCompleteCallByType",
    L"optCompleteScheduledCall",
    L"optCompleteUnscheduledCall",
    L"optOpenHistoryAfterSaving",
    L"chkCreateLink",
    L"txtLinkedItemPath",
    L"chkDelayAddingLink",
    L"txtDelayAddingLinkSeconds",
    L"chkConfirmRecentRecordingFile",
    L"txtRecordingFileMaxAgeSeconds",
    L"chkConfirmLinkCallIdentifier",
    L"chkAlwaysShowForm",
    L"chkAutoProcess",
    L"chkWriteLog",
    L"chkLogCOMCalls",
    L"txtCOMDurationSeconds",
});

}  // namespace corvane
