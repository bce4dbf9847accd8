#include "windows/HistoryItemDialog.h"

#include "shared/Text.h"
#include "windows/Desk.h"
#include "windows/ResourceIds.h"
#include "windows/WindowList.h"

namespace practice {

HistoryItemDialog::HistoryItemDialog(Desk& desk, const std::wstring& recordId)
    : DialogWindow(desk) {
    Create(IDD_HISTORY_ITEM, nullptr);
    ListWindowAs(handle(), historyItemWindowName);
    SendDlgItemMessageW(handle(), IDC_ITEM_NOTES, EM_SETLIMITTEXT, 0, 0);
    const Table item = desk_.database().Run(
        L"select coalesce(c.Contact || ', ' || c.Company, ''), h.RecType, "
        L"h.OnDate || ' ' || h.OnTime, h.UserID, h.Ref, h.Notes from ContHist h "
        L"left join Contact1 c on c.AccountNo = h.AccountNo where h.RecID = ?",
        {recordId});
    constexpr int controls[] = {IDC_ITEM_CONTACT, IDC_ITEM_KIND,      IDC_ITEM_WHEN,
                                IDC_ITEM_USER,    IDC_ITEM_REFERENCE, IDC_ITEM_NOTES};
    if (!item.rows.empty()) {
        std::size_t field = 0;
        for (const int control : controls)
            SetText(control, WithControlLineEnds(item.rows.front()[field++]).c_str());
    }
    Show();
}

bool HistoryItemDialog::OnCommand(int controlId, int) {
    if (controlId != IDOK)
        return false;
    DestroyWindow(handle());
    return true;
}

}  // namespace practice
