#include "calls/RecordingLink.h"

#include <cmath>
#include <utility>

#include "seams/Clock.h"
#include "seams/Conversions.h"
#include "seams/MessageBoxes.h"
#include "seams/StatusWriter.h"
#include "ui/form/Form.h"
#include "ui/form/NumberIn.h"
#include "util/RuntimeError.h"
#include "util/Text.h"

namespace corvane {

namespace {

// Read-only, hidden, system, archive and normal files.
constexpr std::uint32_t recordingAttributes = 0xA7;

constexpr std::wstring_view procedureName = L"GetFileLink";

// Whole seconds between two automation dates; both stand on whole seconds.
std::int64_t SecondsBetween(double from, double to) {
    constexpr double secondsPerDay = 86400.0;
    return std::llround((to - from) * secondsPerDay);
}

std::wstring Anchor(std::wstring_view fullPath) {
    return Join(L"<A href='file://", fullPath, L"'>", fullPath, L"</A>");
}

// The form GoldMine's own editor writes; the anchor is closed twice.
std::wstring DocumentWith(std::wstring_view anchor) {
    return Join(
        L"<!DOCTYPE HTML PUBLIC '-//W3C//DTD HTML 4.0 Transitional//EN'>\r\n", L"<HTML><HEAD>\r\n",
        L"<STYLE type=text/css> P, UL, OL, DL, DIR, MENU, PRE { margin: 0 auto;}</STYLE>\r\n",
        L"<META name=GENERATOR content='MSHTML 8.00.7601.17824'></HEAD>\r\n",
        L"<BODY leftMargin=1 rightMargin=1 topMargin=1><FONT size=2 face='Segoe UI,Tahoma'>\r\n",
        L"<DIV>", anchor, L"</A><BR></DIV></FONT></BODY></HTML>\r\n");
}

std::wstring NotReadWhole(std::wstring_view folderText) {
    return Join(L"Could not read all of recordings folder ", Quoted(folderText),
                L". Link to recording not saved.");
}

}  // namespace

RecordingLink::RecordingLink(Form& form, const FileSystem& files, StatusWriter& status,
                             MessageBoxes& boxes, Clock& clock)
    : form_(form), files_(files), status_(status), boxes_(boxes), clock_(clock) {}

bool RecordingLink::GetFileLink(RecordingLinkState& state) {
    state = {};
    try {
        return NamedProcedure(procedureName, [&] { return PrepareLink(state); });
    } catch (const RuntimeError& error) {
        if (error.number != ErrorNumber::PermissionDenied)
            throw;
        return Fail(
            state, Join(L"You need at least Read and List Folder Contents permissions on "
                        L"the recordings folder ",
                        Quoted(form_.txtLinkedItemPath.text()), L". Link to recording not saved."));
    }
}

bool RecordingLink::PrepareLink(RecordingLinkState& state) {
    const std::wstring& identifierText = form_.txtCallIdentifier.text();
    const std::wstring callIdentifier = identifierText.substr(0, identifierText.find(L':'));
    const std::wstring& folderText = form_.txtLinkedItemPath.text();

    if (!files_.FolderExists(folderText)) {
        boxes_.Notify(Join(L"Could not access recordings folder:", lineBreak, lineBreak, folderText,
                           lineBreak, lineBreak, L"Link to recording will not be saved."));
        return Fail(state, Join(L"Could not access recordings folder ", Quoted(folderText),
                                L". Link to recording not saved."));
    }

    const NewestFile newest = FindNewestFile(folderText);
    if (!newest.complete) {
        state.RecordingPathOrReason = NotReadWhole(folderText);
        return false;  // it was reported
    }
    if (newest.name.empty()) {
        return Fail(state, Join(L"No files found in recordings folder ", Quoted(folderText),
                                L". Link to recording not saved."));
    }
    const std::wstring fullPath = AddTrailingBackslash(folderText) + newest.name;

    if (form_.chkConfirmRecentRecordingFile.checked()) {
        const std::wstring reason = ReasonOfAge(newest, fullPath);
        if (!reason.empty())
            return Fail(state, reason);
    }
    if (form_.chkConfirmLinkCallIdentifier.checked() &&
        fullPath.find(Join(L"(", callIdentifier, L")")) == std::wstring::npos) {
        return Fail(state, Join(L"The most recent file in the recordings folder ", Quoted(fullPath),
                                L" does not include the 3CX Call Identifier ",
                                Quoted(callIdentifier), L". Link not saved."));
    }

    state.RecordingPathOrReason = fullPath;
    state.LinkHTML = Anchor(fullPath);
    state.LinkDocumentHTML = DocumentWith(state.LinkHTML);
    status_.WriteStatus(Join(L"Prepared link to ", Quoted(fullPath), L"."));
    return true;
}

std::wstring RecordingLink::ReasonOfAge(const NewestFile& newest,
                                        const std::wstring& fullPath) const {
    const std::wstring file =
        Join(L"The most recent file in the recordings folder, ", Quoted(fullPath));
    const double now = clock_.Now();
    if (CalendarTime(now).year - CalendarTime(newest.modified).year > 1)
        return Join(file, L", was created more than a year ago. Link to recording not saved.");
    const TextBox& maxAge = form_.txtRecordingFileMaxAgeSeconds;
    const std::int64_t age = SecondsBetween(newest.modified, now);
    if (age > LongLongIn(maxAge)) {
        return Join(file, L", was created ", std::to_wstring(age),
                    L" seconds ago, which exceeds the specified maximum age of ", maxAge.text(),
                    L" seconds. Link to recording not saved.");
    }
    return {};
}

bool RecordingLink::Fail(RecordingLinkState& state, std::wstring reason) {
    status_.WriteStatus(reason);
    state.RecordingPathOrReason = std::move(reason);
    return false;
}

NewestFile RecordingLink::FindNewestFile(const std::wstring& folderText) {
    const double begin = clock_.Timer();
    NewestFile newest =
        files_.GetNewestFileInFolder(AddTrailingBackslash(folderText), L"*.*", recordingAttributes);
    status_.WriteStatus(Join(L"Checked ", std::to_wstring(newest.filesSeen), L" files in ",
                             Quoted(folderText), L" in ", FormatSeconds(clock_.Timer() - begin),
                             L" seconds."));
    if (!newest.complete) {
        // Which file is the newest is not known.
        status_.WriteStatus(NotReadWhole(folderText));
    } else if (!newest.name.empty()) {
        status_.WriteStatus(Join(L"Most recent file is ", Quoted(newest.name), L", modified ",
                                 GeneralDateText(newest.modified), L"."));
    }
    return newest;
}

bool RecordingLink::MayLeaveFolder() {
    const std::wstring& folderText = form_.txtLinkedItemPath.text();
    if (folderText.empty())
        return true;
    try {
        return NamedProcedure(procedureName, [&] {
            if (!files_.FolderExists(folderText)) {
                boxes_.Notify(
                    L"Folder not found. Please specify a valid folder that you have permission to "
                    L"access, e.g. \\\\Server\\Share\\Folder or X:\\Folder.");
                return false;
            }
            const NewestFile newest = FindNewestFile(folderText);
            if (newest.complete && newest.name.empty())
                status_.WriteStatus(L"No files found.");
            return true;
        });
    } catch (const RuntimeError& error) {
        if (error.number != ErrorNumber::PermissionDenied)
            throw;
        boxes_.Notify(
            L"You need at least Read and List Folder Contents permissions on the recordings "
            L"folder.");
        return false;
    }
}

}  // namespace corvane
