#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "calls/ContactSearch.h"
#include "calls/RecordingLinkState.h"

namespace corvane {

class CallHistory;
class Clock;
class Dialer;
class Form;
class HtmlNotes;
class RecordingLink;
class StatusWriter;

// Turns the current event into what the user configured for it: search and show the contact,
// create its history, or dial.
class Dispatcher {
public:
    Dispatcher(Form& form, Dialer& dialer, ContactSearch& search, CallHistory& history,
               RecordingLink& recordingLink, HtmlNotes& notes, StatusWriter& status, Clock& clock);

    // Reads the parameter boxes and the settings; reports only by status lines. The user can reach
    // the window during its waits: a call that is asked for while one is processed is not begun.
    void ProcessCall();
    // Also while GoldMine's dialog is being filled in, which may come after the call.
    [[nodiscard]] bool processing() const { return processing_ > 0; }
    // Runs when the call has been processed or the dialog filled in, whatever came of it.
    void setAfterCall(std::function<void()> afterCall) { afterCall_ = std::move(afterCall); }

    // GoldMine's Complete Call dialog came up: fills in what the last history prepared.
    void FillInCallDialog(std::int32_t windowHandle);

private:
    template <class Work>
    void WhileProcessing(Work work);
    void DialOrHandleEvent();
    bool InboundSearch();
    void History(bool foundInThisRun);
    void CreateHistoryForEvent();
    void PrepareLink(RecordingLinkState& link);

    Form& form_;
    Dialer& dialer_;
    ContactSearch& search_;
    CallHistory& history_;
    RecordingLink& recordingLink_;
    HtmlNotes& notes_;
    StatusWriter& status_;
    Clock& clock_;
    RecordingLinkState link_;
    std::wstring refText_;
    int processing_ = 0;
    std::function<void()> afterCall_;
};

}  // namespace corvane
