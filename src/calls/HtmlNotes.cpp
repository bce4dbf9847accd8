#include "calls/HtmlNotes.h"

#include "calls/RecordingLinkState.h"
#include "gmapi/Envelope.h"
#include "gmapi/WindowCommands.h"
#include "seams/Clock.h"
#include "seams/StatusWriter.h"
#include "ui/form/Form.h"
#include "util/RuntimeError.h"
#include "util/Text.h"

namespace corvane {

namespace {

// Controls of GoldMine's Complete Call dialog.
constexpr std::wstring_view refControl = L"1016";
constexpr std::wstring_view notesControl = L"1017";

constexpr int mostWaits = 11;
constexpr std::uint32_t waitMilliseconds = 1000;

// The base of object errors plus 514.
constexpr std::int64_t timeOutError = 0x80040202;

}  // namespace

HtmlNotes::HtmlNotes(Form& form, WindowCommands& windows, StatusWriter& status, Clock& clock,
                     DocumentFactory newDocument, std::wstring programName)
    : form_(form),
      windows_(windows),
      status_(status),
      clock_(clock),
      newDocument_(std::move(newDocument)),
      programName_(std::move(programName)) {}

void HtmlNotes::AddRefAndNotesToOpenCallDialog(std::int32_t windowHandle,
                                               const std::wstring& refText,
                                               const RecordingLinkState& link) {
    NamedProcedure(L"AddRefAndNotesToOpenCallDialog", [&] {
        const std::wstring window = std::to_wstring(windowHandle);
        std::wstring addition = form_.NotesAreHTML ? link.LinkHTML : link.RecordingPathOrReason;
        if (!refText.empty()) {
            if (TrimBlanks(windows_.GetControlText(window, refControl)).empty()) {
                if (!windows_.SetControlText(window, refControl, refText))
                    status_.WriteStatus(L"Could not fill in Ref of Complete Call dialog.");
            } else if (!addition.empty()) {
                addition = Join(refText, form_.NotesAreHTML ? L"<br>" : lineBreak, addition);
            } else {
                addition = refText;
            }
        }
        if (addition.empty())
            return;
        const std::wstring notes = windows_.GetControlText(window, notesControl);
        if (!windows_.SetControlText(window, notesControl,
                                     Escape(NotesWithAddition(notes, addition)))) {
            status_.WriteStatus(L"Could not fill in Notes of Complete Call dialog.");
        }
    });
}

std::wstring HtmlNotes::NotesWithAddition(const std::wstring& notes, const std::wstring& addition) {
    if (form_.NotesAreHTML) {
        std::wstring fragment =
            Join(L"<P><FONT size=2 face='Segoe UI,Tahoma'>", addition, L"</FONT></P>");
        if (!TrimBlanks(HTMLToText(notes)).empty())
            fragment += L"<br>";
        return PrependHTMLToBody(notes, fragment);
    }
    if (TrimBlanks(notes).empty())
        return addition + notes;
    return Join(addition, lineBreak, lineBreak, notes);
}

std::wstring HtmlNotes::PrependHTMLToBody(const std::wstring& existing,
                                          const std::wstring& fragment) {
    constexpr std::wstring_view procedureName = L"PrependHTMLToBody";
    return NamedProcedure(procedureName, [&] {
        const auto document = newDocument_();
        document->InsertAtStartOfBody(existing, fragment);
        int waits = 0;
        while (!document->Complete() && waits < mostWaits) {
            clock_.Sleep(waitMilliseconds);
            clock_.PumpEvents();
            ++waits;
        }
        if (waits == mostWaits) {
            RuntimeError error;
            error.number = timeOutError;
            error.source = Join(programName_, L".frmCorvaneTo3CX.", procedureName);
            error.description =
                L"Timed out after 10 seconds trying to insert HTML string before existing HTML "
                L"Body.";
            status_.WriteStatus(error.description);
            throw error;
        }
        return document->Serialise();
    });
}

std::wstring HtmlNotes::HTMLToText(const std::wstring& html) {
    return newDocument_()->VisibleText(html);
}

}  // namespace corvane
