#include "windows/CompleteCallDialog.h"

#include <utility>

#include "shared/Files.h"
#include "shared/Text.h"
#include "windows/ResourceIds.h"
#include "windows/WindowList.h"

namespace practice {
namespace {

const wchar_t* KindText(CallKind kind) {
    switch (kind) {
        case CallKind::Scheduled:
            return L"Scheduled call";
        case CallKind::UnscheduledIncoming:
            return L"Unscheduled incoming call";
        case CallKind::UnscheduledOutgoing:
            return L"Unscheduled outgoing call";
    }
    return L"";
}

struct CallTexts {
    std::wstring reference;
    std::wstring notes;
};

// The file's first line and all behind it; nothing when there is no file.
CallTexts ReadCallTexts(const std::wstring& file) {
    const std::wstring text = FromUtf8(ReadWholeFile(file).value_or(""));
    const std::size_t lineFeed = text.find(L'\n');
    CallTexts texts{text.substr(0, lineFeed), L""};
    if (!texts.reference.empty() && texts.reference.back() == L'\r')
        texts.reference.pop_back();
    if (lineFeed != std::wstring::npos)
        texts.notes = WithControlLineEnds(std::wstring_view(text).substr(lineFeed + 1));
    return texts;
}

}  // namespace

CompleteCallDialog::CompleteCallDialog(Desk& desk, HWND owner, CallKind kind, std::wstring account)
    : DialogWindow(desk), kind_(kind), account_(std::move(account)) {
    Create(IDD_COMPLETE_CALL, owner);
    ListWindowAs(handle(), completeCallWindowName);
    // Notes may be of any length.
    SendDlgItemMessageW(handle(), IDC_NOTES, EM_SETLIMITTEXT, 0, 0);
    SetText(IDC_CALL_KIND, KindText(kind_));
    const Table contact = desk_.database().Run(
        L"select Contact, Company from Contact1 where AccountNo = ?", {account_});
    if (!contact.rows.empty()) {
        const Row& row = contact.rows.front();
        SetText(IDC_CALL_CONTACT, (row[0] + L", " + row[1]).c_str());
    }
    const CallTexts texts = ReadCallTexts(desk_.options().dataFolder + L"complete-call.txt");
    SetText(IDC_REFERENCE, texts.reference.c_str());
    SetText(IDC_NOTES, texts.notes.c_str());
    Show();
    SetFocus(GetDlgItem(handle(), IDC_REFERENCE));
}

bool CompleteCallDialog::OnCommand(int controlId, int) {
    if (controlId != IDOK)
        return false;
    Save();
    DestroyWindow(handle());
    return true;
}

void CompleteCallDialog::Save() {
    Database::History history;
    history.account = account_;
    // A scheduled call is one that was to be made.
    history.recordType = kind_ == CallKind::UnscheduledIncoming ? L"CI" : L"CO";
    history.reference = TextOf(GetDlgItem(handle(), IDC_REFERENCE));
    history.notes = TextOf(GetDlgItem(handle(), IDC_NOTES));
    history.user = desk_.options().user;
    desk_.SetCurrentHistory(desk_.database().InsertHistory(history, false));
    desk_.RefreshContacts();
}

void CompleteCallDialog::OnClosed() {
    desk_.WindowWentDown(completeCallWindowName, handle());
}

}  // namespace practice
