#include "windows/FindContactDialog.h"

#include "windows/Desk.h"
#include "windows/ResourceIds.h"
#include "windows/WindowList.h"

namespace practice {

FindContactDialog::FindContactDialog(Desk& desk) : DialogWindow(desk) {
    Create(IDD_FIND_CONTACT, nullptr);
    Search();
    Show();
    SetFocus(GetDlgItem(handle(), IDC_FIND_TEXT));
}

bool FindContactDialog::OnCommand(int controlId, int notification) {
    if (controlId == IDC_FIND_TEXT && notification == EN_CHANGE) {
        Search();
        return true;
    }
    if (controlId == IDOK || (controlId == IDC_FIND_LIST && notification == LBN_DBLCLK)) {
        ShowChosen();
        return true;
    }
    return false;
}

void FindContactDialog::Search() {
    const HWND list = GetDlgItem(handle(), IDC_FIND_LIST);
    SendMessageW(list, LB_RESETCONTENT, 0, 0);
    accounts_.clear();
    const Table found = desk_.database().Run(
        L"select AccountNo, Contact || ' (' || Company || ')  ' || Phone1 from Contact1 "
        L"where instr(lower(Contact || ' ' || Company || ' ' || Phone1 || ' ' || Phone2 || ' ' || "
        L"Phone3), lower(?)) > 0 order by Contact",
        {TextOf(GetDlgItem(handle(), IDC_FIND_TEXT))});
    for (const Row& row : found.rows) {
        accounts_.push_back(row[0]);
        SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(row[1].c_str()));
    }
    SendMessageW(list, LB_SETCURSEL, 0, 0);
}

void FindContactDialog::ShowChosen() {
    const LRESULT chosen = SendDlgItemMessageW(handle(), IDC_FIND_LIST, LB_GETCURSEL, 0, 0);
    if (chosen >= 0 && static_cast<std::size_t>(chosen) < accounts_.size()) {
        desk_.ShowInCurrentWindow(accounts_[static_cast<std::size_t>(chosen)]);
        DestroyWindow(handle());
    }
}

}  // namespace practice
