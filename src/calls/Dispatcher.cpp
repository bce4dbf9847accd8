#include "calls/Dispatcher.h"

#include <string>

#include "calls/CallHistory.h"
#include "calls/CallInProgress.h"
#include "calls/CompleteCallDialog.h"
#include "calls/RecordingLink.h"
#include "calls/RecordingLinkState.h"
#include "dialing/Dialer.h"
#include "seams/Clock.h"
#include "seams/Conversions.h"
#include "seams/StatusWriter.h"
#include "ui/form/Form.h"
#include "util/RuntimeError.h"
#include "util/Text.h"

namespace corvane {

namespace {

constexpr std::wstring_view searchPhase = L"Inbound call search for CallerID:  ";
constexpr std::wstring_view historyPhase = L"History creation:  ";

constexpr std::wstring_view started = L"S";
constexpr std::wstring_view connected = L"C";
constexpr std::wstring_view ended = L"E";
constexpr std::wstring_view inbound = L"I";
constexpr std::wstring_view outbound = L"O";

// The words of an event in the Reference and in the status lines.
struct EventWords {
    std::wstring_view reference;
    std::wstring_view stage;
};

EventWords WordsOf(std::wstring_view notification) {
    if (notification == started)
        return {L"Started ", L"start"};
    if (notification == connected)
        return {L"Connected ", L"connection"};
    if (notification == ended)
        return {L"Ended ", L"end"};
    return {};
}

// A wait can be as long as 32 bits of milliseconds. Raises with the box's name.
std::int64_t MillisecondsIn(const TextBox& seconds) {
    return NamedProcedure(seconds.name(), [&] {
        const std::int64_t milliseconds = std::int64_t{LongFromText(seconds.text())} * 1000;
        if (milliseconds != static_cast<std::int32_t>(milliseconds))
            throw MakeRuntimeError(ErrorNumber::Overflow);
        return milliseconds;
    });
}

}  // namespace

void Dispatcher::ProcessCall() {
    if (parts_.call.busy())
        return;
    const CallInProgress::Part part(parts_.call);
    NamedProcedure(L"ProcessCall", [this] { DialOrHandleEvent(); });
}

void Dispatcher::DialOrHandleEvent() {
    const double begin = parts_.clock.Timer();
    if (form_.visible())
        form_.SelectTab(form_.tabstripOptions, OptionsTab::status);

    if (!form_.txtOutboundPhone.text().empty()) {
        if (!parts_.dialer.Dial())
            return;
    } else {
        History(form_.txtCallType.text() == inbound && InboundSearch());
    }
    parts_.status.WriteStatus(Join(L"Call processing completed in ",
                                   FormatSeconds(parts_.clock.Timer() - begin), L" seconds."));
}

bool Dispatcher::InboundSearch() {
    const auto report = [this](std::wstring_view text) {
        parts_.status.WriteStatus(Join(searchPhase, text));
    };
    if (!form_.chkPopOnInboundCall.checked()) {
        report(L"no searching requested on inbound call.");
        return false;
    }
    const bool atStart = form_.optPopOnInboundCallStart.selected();
    const bool atConnect = form_.optPopOnInboundCallConnect.selected();
    if (atStart)
        report(L"requested while inbound call is _ringing_.");
    if (atConnect)
        report(L"requested when inbound call is _answered_.");

    bool found = false;
    const std::wstring& notification = form_.txtNotifType.text();
    if (notification == started) {
        if (atStart) {
            report(L"searching while incoming call is ringing.");
            found = parts_.search.SearchContact(ShowInGoldMine::Yes);
        } else {
            report(L"call start (ringing) event ignored.");
        }
    } else if (notification == connected) {
        if (atConnect) {
            report(L"searching after incoming call was answered.");
            found = parts_.search.SearchContact(ShowInGoldMine::Yes);
        } else {
            report(L"call connect (answered) event ignored.");
        }
    } else if (notification == ended) {
        report(L"call end event ignored.");
    }
    report(L"processing completed.");
    return found;
}

void Dispatcher::History(bool foundInThisRun) {
    const auto report = [this](std::wstring_view text) {
        parts_.status.WriteStatus(Join(historyPhase, text));
    };
    if (form_.chkCreateHistory.value() == CheckBox::unchecked) {
        report(L"no history creation requested.");
        return;
    }
    const bool atStart = form_.optProcessStart.selected();
    const bool atConnect = form_.optProcessConnect.selected();
    const bool atEnd = form_.optProcessEnd.selected();
    if (atStart)
        report(L"requested at _start_ of call.");
    if (atConnect)
        report(L"requested at _connection_ of call.");
    if (atEnd)
        report(L"requested at _end_ of call.");

    const std::wstring& notification = form_.txtNotifType.text();
    const bool isStart = notification == started;
    const bool isConnect = notification == connected;
    const bool isEnd = notification == ended;
    if ((isStart && atStart) || (isConnect && atConnect) || (isEnd && atEnd)) {
        // Only at the start is the inbound search of the same run trusted; at the other moments
        // the user may have moved to another record since.
        const bool found =
            (isStart && foundInThisRun) || parts_.search.SearchContact(ShowInGoldMine::No);
        if (found)
            NamedProcedure(L"CreateHistoryForEvent", [this] { CreateHistoryForEvent(); });
    } else if (isStart) {
        report(L"call start event ignored.");
    } else if (isConnect) {
        report(L"call connect event ignored.");
    } else if (isEnd) {
        report(L"call end event ignored.");
    }
    report(L"processing completed.");
}

void Dispatcher::CreateHistoryForEvent() {
    const EventWords words = WordsOf(form_.txtNotifType.text());
    const std::wstring& callType = form_.txtCallType.text();
    std::wstring refText;
    if (form_.chkFillInRef.checked()) {
        const std::wstring& cid = form_.txtCallerIDFormatted.text();
        if (callType == inbound)
            refText = Join(words.reference, L"incoming call from ", cid);
        if (callType == outbound)
            refText = Join(words.reference, L"outgoing call to ", cid);
    }
    parts_.status.WriteStatus(Join(L"Creating history at ", words.stage, L" of call."));
    RecordingLinkState link;
    if (form_.chkCreateLink.checked())
        PrepareLink(link);
    if (form_.chkAutoOpenHistory.checked() && form_.GoldMineVersionOK &&
        form_.optOpenHistoryBeforeSaving.selected()) {
        parts_.dialog.OpenCompleteCallDialog(refText, link);
    } else {
        parts_.history.SaveHistory(refText, words.stage, link);
    }
    parts_.status.WriteStatus(Join(L"Finishing creating history at ", words.stage, L" of call."));
}

void Dispatcher::PrepareLink(RecordingLinkState& link) {
    if (form_.chkDelayAddingLink.checked()) {
        const TextBox& seconds = form_.txtDelayAddingLinkSeconds;
        const std::int64_t milliseconds = MillisecondsIn(seconds);
        parts_.status.WriteStatus(Join(L"Delaying adding link for ", seconds.text(), L" seconds."));
        parts_.clock.PumpEvents();
        // A negative wait is an empty one.
        if (milliseconds > 0)
            parts_.clock.Sleep(static_cast<std::uint32_t>(milliseconds));
    }
    parts_.recordingLink.GetFileLink(link);
}

}  // namespace corvane
