#include "calls/CompleteCallDialog.h"

#include "calls/HtmlNotes.h"
#include "gmapi/Envelope.h"
#include "gmapi/GMUI.h"
#include "gmapi/WindowCommands.h"
#include "seams/Clock.h"
#include "seams/StatusWriter.h"
#include "ui/form/Form.h"
#include "util/ErrorReport.h"
#include "util/RuntimeError.h"
#include "util/Text.h"

namespace corvane {

namespace {

// GoldMine's name for the dialog, and the numbers of two of its controls.
constexpr std::wstring_view completeCallWindow = L"DIALOGSCHEDULECOMPLETE";
constexpr std::wstring_view refControl = L"1016";
constexpr std::wstring_view notesControl = L"1017";

constexpr int mostWaitsForDialog = 10;
constexpr std::uint32_t dialogWaitMilliseconds = 1000;

}  // namespace

std::wstring_view CompleteCallDialog::CompleteCallCommand() const {
    const Form& form = parts_.form;
    const bool outbound = form.txtCallType.text() == L"O";
    if (form.optCompleteScheduledCall.selected() ||
        (form.optCompleteCallByType.selected() && outbound)) {
        return L"CompleteScheduledCall";
    }
    // A call of another type, which only a person can type, counts as incoming.
    return outbound ? L"CompleteUnscheduledOutgoingCall" : L"CompleteUnscheduledIncomingCall";
}

void CompleteCallDialog::OpenCompleteCallDialog(const std::wstring& refText,
                                                const RecordingLinkState& link) {
    refText_ = refText;
    link_ = link;
    const std::wstring command = PlainCommand(L"MenuCommand", CompleteCallCommand());
    std::wstring reply;
    try {
        if (!Register(true)) {
            parts_.status.WriteStatus(
                L"Could not watch for Complete Call dialog, so its Ref and Notes may stay empty.");
        }
        parts_.status.WriteStatus(L"Opening Complete Call dialog before saving in history.");
        reply = parts_.gmui.GMUI_Execute(command);
    } catch (...) {
        awaited_ = false;  // no dialog will come
        throw;
    }
    if (reply == SuccessReply(L"MenuCommand", L"The command was executed."))
        return;
    awaited_ = false;
    parts_.status.WriteStatus(L"Could not open Complete Call dialog.");
}

bool CompleteCallDialog::Register(bool monitor) {
    awaited_ = monitor;
    registered_ = monitor;
    return parts_.windows.RegisterWindowUpDown(completeCallWindow, monitor);
}

void CompleteCallDialog::moGMUI_WindowUpDown(const std::wstring& windowName, bool up,
                                             std::int32_t windowHandle) noexcept {
    if (windowName != completeCallWindow || !up || !awaited_ || beingFilledIn_)
        return;
    beingFilledIn_ = true;
    const bool filledIn = parts_.errors.Guard([&] {
        const CallInProgress::Part part(parts_.call);
        AddRefAndNotesToOpenCallDialog(windowHandle);
    });
    beingFilledIn_ = false;
    awaited_ = false;
    if (filledIn) {
        parts_.errors.Guard([this] {
            parts_.status.WriteStatus(
                L"Finished opening Complete Call dialog before saving in history.");
        });
    }
}

void CompleteCallDialog::AddRefAndNotesToOpenCallDialog(std::int32_t windowHandle) {
    NamedProcedure(L"AddRefAndNotesToOpenCallDialog", [&] {
        WindowCommands& windows = parts_.windows;
        const bool isHtml = parts_.form.NotesAreHTML;
        const std::wstring window = std::to_wstring(windowHandle);
        std::wstring addition = isHtml ? link_.LinkHTML : link_.RecordingPathOrReason;
        if (!refText_.empty()) {
            if (TrimBlanks(windows.GetControlText(window, refControl)).empty()) {
                if (!windows.SetControlText(window, refControl, refText_))
                    parts_.status.WriteStatus(L"Could not fill in Ref of Complete Call dialog.");
            } else if (!addition.empty()) {
                addition = Join(refText_, isHtml ? L"<br>" : lineBreak, addition);
            } else {
                addition = refText_;
            }
        }
        if (addition.empty())
            return;
        const std::wstring notes = windows.GetControlText(window, notesControl);
        if (!windows.SetControlText(window, notesControl,
                                    Escape(NotesWithAddition(notes, addition)))) {
            parts_.status.WriteStatus(L"Could not fill in Notes of Complete Call dialog.");
        }
    });
}

std::wstring CompleteCallDialog::NotesWithAddition(const std::wstring& notes,
                                                   const std::wstring& addition) {
    if (parts_.form.NotesAreHTML) {
        std::wstring fragment =
            Join(L"<P><FONT size=2 face='Segoe UI,Tahoma'>", addition, L"</FONT></P>");
        if (!TrimBlanks(parts_.notes.HTMLToText(notes)).empty())
            fragment += L"<br>";
        return parts_.notes.PrependHTMLToBody(notes, fragment);
    }
    // The reader of the reply has made LF of a raw CR LF.
    const std::wstring oldNotes = WithLineBreaks(notes);
    if (TrimBlanks(oldNotes).empty())
        return addition + oldNotes;
    return Join(addition, lineBreak, lineBreak, oldNotes);
}

bool CompleteCallDialog::WaitUntilFilledIn() {
    if (!registered_)
        return false;
    for (int wait = 1; awaited_ && wait <= mostWaitsForDialog; ++wait) {
        parts_.status.WriteStatus(Join(L"Waiting for history Ref and Notes to be filled in: ",
                                       std::to_wstring(wait), L" second(s)"));
        parts_.clock.PumpEvents();
        parts_.clock.Sleep(dialogWaitMilliseconds);
    }
    parts_.clock.PumpEvents();
    return true;
}

void CompleteCallDialog::Withdraw() {
    // A refusal changes nothing: the program ends.
    static_cast<void>(Register(false));
}

}  // namespace corvane
