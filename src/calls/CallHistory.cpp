#include "calls/CallHistory.h"

#include "calls/RecordingLinkState.h"
#include "gmapi/Envelope.h"
#include "gmapi/GMUI.h"
#include "gmapi/Macro.h"
#include "gmapi/Records.h"
#include "seams/Conversions.h"
#include "seams/MessageBoxes.h"
#include "seams/StatusWriter.h"
#include "ui/form/Form.h"
#include "util/RuntimeError.h"
#include "util/Text.h"

namespace corvane {

namespace {

// GoldMine takes a field's text in pieces of this many UTF-16 units.
constexpr std::size_t notesPiece = 200;

}  // namespace

CallHistory::CallHistory(Form& form, GMUI& gmui, Macro& macro, Records& records,
                         StatusWriter& status, MessageBoxes& boxes)
    : form_(form), gmui_(gmui), macro_(macro), records_(records), status_(status), boxes_(boxes) {}

void CallHistory::SaveHistory(const std::wstring& refText, std::wstring_view stageWord,
                              const RecordingLinkState& link) {
    const auto identifier = InsertCallHistory(refText);
    if (!identifier) {
        const std::wstring failure =
            Join(L"Failed to create history ", form_.chkCreateLink.checked() ? L"with link " : L"",
                 L"at ", stageWord, L" of call");
        boxes_.Notify(failure);
        status_.WriteStatus(failure);
        return;
    }
    if (form_.chkCreateLink.checked() && link.linkPrepared()) {
        const std::wstring& notes =
            form_.NotesAreHTML ? link.LinkDocumentHTML : link.RecordingPathOrReason;
        status_.WriteStatus(UpdateHistoryNotes(*identifier, notes)
                                ? L"Updated history Notes with link."
                                : L"Could not update history Notes with link.");
    }
    if (form_.chkAutoOpenHistory.checked()) {
        status_.WriteStatus(L"Opening history item window.");
        status_.WriteStatus(OpenHistoryItem(*identifier) ? L"Opened history item window."
                                                         : L"Could not open history item window.");
    }
}

std::optional<std::wstring> CallHistory::InsertCallHistory(const std::wstring& refText) {
    const auto accountNumber = macro_.AccountNo();
    if (!accountNumber) {
        constexpr std::wstring_view failure =
            L"Could not retrieve GoldMine AccountNo for current record, so no history created.";
        boxes_.Notify(failure);
        status_.WriteStatus(failure);
        return std::nullopt;
    }
    const std::wstring& callType = form_.txtCallType.text();
    HistoryItem item;
    item.AccNo = *accountNumber;
    if (callType == L"I")
        item.RecType = L"CI";
    if (callType == L"O")
        item.RecType = L"CO";
    item.Ref = refText;
    item.User = form_.GoldMineUserName;
    auto identifier = records_.InsHist(item);
    if (!identifier)
        status_.WriteStatus(L"Could not insert call history.");
    else if (callType == L"I")
        status_.WriteStatus(L"Created incoming call history.");
    else if (callType == L"O")
        status_.WriteStatus(L"Created outgoing call history.");
    return identifier;
}

bool CallHistory::UpdateHistoryNotes(const std::wstring& identifier, std::wstring_view notesText) {
    const auto area = records_.Open(L"CONTHIST");
    if (!area || *area == L"0")
        return false;
    const auto moved = records_.Move(*area, L"GOTO", identifier);
    if (!moved || *moved != L"1")
        return false;
    if (!records_.Replace(*area, L"Notes", notesText.substr(0, notesPiece), false))
        return false;
    for (std::size_t begin = notesPiece; begin < notesText.size(); begin += notesPiece) {
        if (!records_.Replace(*area, L"Notes", notesText.substr(begin, notesPiece), true))
            return false;
    }
    // The area is closed even when it could not be unlocked.
    const bool unlocked = records_.Unlock(*area).has_value();
    const bool closed = records_.Close(*area).has_value();
    return unlocked && closed;
}

bool CallHistory::OpenHistoryItem(const std::wstring& identifier) {
    std::wstring recordId = identifier;
    if (IsNumericText(identifier)) {
        const auto current = macro_.Value(L"ContHist->RecID");
        if (!current)
            return false;
        recordId = *current;
    }
    const std::wstring reply =
        gmui_.GMUI_Execute(Command(L"PopCalHistItem").Data(L"recID", recordId).Text());
    return reply == SuccessReply(L"PopCalHistItem", L"Success");
}

}  // namespace corvane
