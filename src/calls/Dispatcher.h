#pragma once

#include "calls/ContactSearch.h"

namespace corvane {

class CallHistory;
class CallInProgress;
class Clock;
class CompleteCallDialog;
class Dialer;
class Form;
class RecordingLink;
struct RecordingLinkState;
class StatusWriter;

// Turns the current event into what the user configured for it: search and show the contact,
// create its history, or dial.
class Dispatcher {
public:
    struct Parts {
        Form& form;
        Dialer& dialer;
        ContactSearch& search;
        CallHistory& history;
        CompleteCallDialog& dialog;
        RecordingLink& recordingLink;
        CallInProgress& call;
        StatusWriter& status;
        Clock& clock;
    };

    explicit Dispatcher(const Parts& parts) : form_(parts.form), parts_(parts) {}

    // Reads the parameter boxes and the settings; reports only by status lines. While a call is in
    // progress, another is not begun.
    void ProcessCall();

private:
    void DialOrHandleEvent();
    [[nodiscard]] bool InboundSearch();
    void History(bool foundInThisRun);
    void CreateHistoryForEvent();
    void PrepareLink(RecordingLinkState& link);

    Form& form_;
    Parts parts_;
};

}  // namespace corvane
