#include "windows/ContactWindow.h"

#include <algorithm>

#include "dialing/Dialer.h"
#include "windows/Desk.h"
#include "windows/ResourceIds.h"
#include "windows/WindowList.h"

namespace practice {
namespace {

constexpr const wchar_t* contactWindowClass = L"PracticeGoldMine";
constexpr const wchar_t* productName = L"Practice GoldMine";
constexpr UINT_PTR statusTimer = 1;

struct FieldPlace {
    const wchar_t* label;
    const wchar_t* column;
    int half;  // 0 left, 1 right
    int line;
    bool isPhone = false;
};

constexpr FieldPlace fieldPlaces[] = {
    {L"Company:", L"Company", 0, 0},      {L"Contact:", L"Contact", 0, 1},
    {L"Title:", L"Title", 0, 2},          {L"City:", L"City", 0, 3},
    {L"Phone 1:", L"Phone1", 1, 0, true}, {L"Phone 2:", L"Phone2", 1, 1, true},
    {L"Phone 3:", L"Phone3", 1, 2, true}, {L"Fax:", L"Fax", 1, 3},
};
constexpr int fieldLines = 4;

// A list shows one line for each item.
std::wstring OnOneLine(std::wstring text) {
    std::replace(text.begin(), text.end(), L'\n', L' ');
    std::erase(text, L'\r');
    return text;
}

}  // namespace

ContactWindow::ContactWindow(Desk& desk, Kind kind) : desk_(desk), kind_(kind) {
    const HINSTANCE instance = GetModuleHandleW(nullptr);
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof windowClass;
    windowClass.lpfnWndProc = Procedure;
    windowClass.hInstance = instance;
    windowClass.hIcon = LoadIconW(nullptr, MAKEINTRESOURCEW(32512));      // IDI_APPLICATION
    windowClass.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));  // IDC_ARROW
    windowClass.hbrBackground = GetSysColorBrush(COLOR_3DFACE);
    windowClass.lpszClassName = contactWindowClass;
    RegisterClassExW(&windowClass);  // fails from the second window on, for good reason

    const Owned<HDC> screen(GetDC(nullptr));
    dpi_ = GetDeviceCaps(screen.get(), LOGPIXELSX);
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    font_.reset(CreateFontIndirectW(&metrics.lfMessageFont));

    const bool isMain = kind_ == Kind::Main;
    const HMENU menu = isMain ? LoadMenuW(instance, MAKEINTRESOURCEW(IDR_MENU)) : nullptr;
    CreateWindowExW(WS_EX_CONTROLPARENT, contactWindowClass, productName, WS_OVERLAPPEDWINDOW,
                    CW_USEDEFAULT, CW_USEDEFAULT, Scaled(isMain ? 760 : 700),
                    Scaled(isMain ? 560 : 480), nullptr, menu, instance, this);
    ListWindowAs(handle(), isMain ? mainWindowName : contactWindowName);
    MakeControls();
    Arrange();
}

HWND ContactWindow::MakeControl(const wchar_t* controlClass, const wchar_t* text, DWORD style,
                                DWORD extendedStyle, int id) {
    const HWND control = CreateWindowExW(
        extendedStyle, controlClass, text, WS_CHILD | WS_VISIBLE | style, 0, 0, 0, 0, handle(),
        static_cast<HMENU>(LongToHandle(id)), GetModuleHandleW(nullptr), nullptr);
    SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font_.get()), FALSE);
    return control;
}

HWND ContactWindow::MakeList(int id, const std::vector<const wchar_t*>& columns) {
    const HWND list =
        MakeControl(WC_LISTVIEWW, L"",
                    LVS_REPORT | LVS_OWNERDATA | LVS_SINGLESEL | LVS_SHOWSELALWAYS | WS_TABSTOP,
                    WS_EX_CLIENTEDGE, id);
    ListView_SetExtendedListViewStyle(list, LVS_EX_FULLROWSELECT);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH;
        column.cx = Scaled(100);
        column.pszText = const_cast<wchar_t*>(columns[i]);
        SendMessageW(list, LVM_INSERTCOLUMNW, i, reinterpret_cast<LPARAM>(&column));
    }
    return list;
}

void ContactWindow::MakeControls() {
    int id = IDC_FIRST_FIELD;
    for (const FieldPlace& place : fieldPlaces) {
        Field field;
        field.label = MakeControl(L"STATIC", place.label, SS_LEFT, 0, 0);
        field.box = MakeControl(L"EDIT", L"", ES_READONLY | ES_AUTOHSCROLL | WS_TABSTOP,
                                WS_EX_CLIENTEDGE, id++);
        if (place.isPhone) {
            field.dial = MakeControl(L"BUTTON", L"Dial", BS_PUSHBUTTON | WS_TABSTOP, 0,
                                     IDC_FIRST_DIAL + static_cast<int>(phones_.size()));
            phones_.push_back(fields_.size());
        }
        fields_.push_back(field);
    }
    additionalLabel_ = MakeControl(L"STATIC", L"&Additional contacts:", SS_LEFT, 0, 0);
    additional_ =
        MakeList(IDC_ADDITIONAL_CONTACTS, {L"Contact", L"Title", L"Phone", L"Ext.", L"Fax"});
    historyLabel_ = MakeControl(L"STATIC", L"&History:", SS_LEFT, 0, 0);
    history_ = MakeList(IDC_HISTORY, {L"Date", L"Time", L"User", L"Kind", L"Reference", L"Notes"});
    if (kind_ == Kind::Main)
        statusBar_ = MakeControl(STATUSCLASSNAMEW, L"", SBARS_SIZEGRIP, 0, IDC_STATUS_BAR);
}

void ContactWindow::Arrange() {
    RECT client{};
    GetClientRect(handle(), &client);
    int bottom = client.bottom;
    if (statusBar_) {
        SendMessageW(statusBar_, WM_SIZE, 0, 0);
        RECT bar{};
        GetWindowRect(statusBar_, &bar);
        bottom -= bar.bottom - bar.top;
    }
    const int margin = Scaled(11);
    const int gap = Scaled(7);
    const int boxHeight = Scaled(22);
    const int textHeight = Scaled(16);
    const int labelWidth = Scaled(62);
    const int buttonWidth = Scaled(54);
    const int half = (client.right - 2 * margin - 2 * gap) / 2;
    for (std::size_t i = 0; i < fields_.size(); ++i) {
        const FieldPlace& place = fieldPlaces[i];
        const int x = margin + place.half * (half + 2 * gap);
        const int y = margin + place.line * (boxHeight + gap);
        MoveWindow(fields_[i].label, x, y + Scaled(3), labelWidth, textHeight, TRUE);
        // All boxes of a column are as wide, whether or not a button follows.
        const int buttonSpace = place.half == 1 ? buttonWidth + gap : 0;
        const int boxWidth = half - labelWidth - buttonSpace;
        MoveWindow(fields_[i].box, x + labelWidth, y, boxWidth, boxHeight, TRUE);
        if (fields_[i].dial)
            MoveWindow(fields_[i].dial, x + half - buttonWidth, y, buttonWidth, boxHeight, TRUE);
    }
    int y = margin + fieldLines * (boxHeight + gap) + gap;
    const int width = client.right - 2 * margin;
    const int listSpace = std::max(bottom - y - margin - gap - 2 * (textHeight + Scaled(3)), 0);
    const int additionalHeight = listSpace * 2 / 5;
    const auto place = [&](HWND label, HWND list, int height) {
        MoveWindow(label, margin, y, width, textHeight, TRUE);
        y += textHeight + Scaled(3);
        MoveWindow(list, margin, y, width, height, TRUE);
        y += height + gap;
    };
    place(additionalLabel_, additional_, additionalHeight);
    place(historyLabel_, history_, listSpace - additionalHeight);

    const auto share = [&](HWND list, const std::vector<int>& percents) {
        const int inner = width - GetSystemMetrics(SM_CXVSCROLL) - Scaled(6);
        for (std::size_t column = 0; column < percents.size(); ++column)
            SendMessageW(list, LVM_SETCOLUMNWIDTH, column, inner * percents[column] / 100);
    };
    share(additional_, {28, 22, 22, 8, 20});
    share(history_, {13, 8, 12, 7, 34, 26});
}

void ContactWindow::Show(const std::wstring& account) {
    account_ = account;
    Refresh();
}

void ContactWindow::Refresh() {
    std::wstring columns;
    for (const FieldPlace& place : fieldPlaces)
        columns += (columns.empty() ? L"" : L", ") + std::wstring(place.column);
    const Table contact = desk_.database().Run(
        L"select " + columns + L" from Contact1 where AccountNo = ?", {account_});
    for (std::size_t i = 0; i < fields_.size(); ++i) {
        SetWindowTextW(fields_[i].box,
                       contact.rows.empty() ? L"" : contact.rows.front()[i].c_str());
        if (fields_[i].dial) {
            const bool hasNumber = GetWindowTextLengthW(fields_[i].box) > 0;
            // A disabled control would keep the focus, and the keyboard with it.
            if (!hasNumber && GetFocus() == fields_[i].dial)
                SetFocus(fields_[i].box);
            EnableWindow(fields_[i].dial, hasNumber);
        }
    }
    SetWindowTextW(handle(), contact.rows.empty()
                                 ? productName
                                 : (contact.rows.front()[0] + L" - " + productName).c_str());
    additionalContacts_ = desk_.database().Run(
        L"select Contact, Title, Phone, Ext, Fax from ContSupp where "
        L"AccountNo = ? and RecType = 'C' order by rowid",
        {account_});
    historyItems_ = desk_.database().Run(
        L"select OnDate, OnTime, UserID, RecType, Ref, Notes, RecID from ContHist where "
        L"AccountNo = ? order by OnDate desc, OnTime desc, rowid desc",
        {account_});
    ListView_SetItemCount(additional_, static_cast<int>(additionalContacts_.rows.size()));
    ListView_SetItemCount(history_, static_cast<int>(historyItems_.rows.size()));
}

void ContactWindow::TellListText(const NMLVDISPINFOW& asked) const {
    const LVITEMW& item = asked.item;
    const Table& table = asked.hdr.idFrom == IDC_HISTORY ? historyItems_ : additionalContacts_;
    const auto row = static_cast<std::size_t>(item.iItem);
    if ((item.mask & LVIF_TEXT) == 0 || item.cchTextMax <= 0 || row >= table.rows.size())
        return;
    const std::wstring text = OnOneLine(table.rows[row][static_cast<std::size_t>(item.iSubItem)]);
    const std::size_t length =
        text.copy(item.pszText, static_cast<std::size_t>(item.cchTextMax) - 1);
    item.pszText[length] = L'\0';
}

void ContactWindow::ShowStatus(const std::wstring& message, long seconds) {
    SetWindowTextW(statusBar_, message.c_str());
    KillTimer(handle(), statusTimer);
    const auto wait = static_cast<UINT>(std::clamp(seconds, 0L, 3600L)) * 1000;
    if (wait > 0)
        SetTimer(handle(), statusTimer, wait, nullptr);
}

void ContactWindow::Step(int direction) {
    const std::wstring sql =
        direction > 0 ? L"select AccountNo from Contact1 where rowid > coalesce((select rowid from "
                        L"Contact1 where AccountNo = ?), 0) order by rowid"
                      : L"select AccountNo from Contact1 where rowid < (select rowid from Contact1 "
                        L"where AccountNo = ?) order by rowid desc";
    if (const auto account = desk_.database().Value(sql, {account_}))
        Show(*account);
}

void ContactWindow::OnMenu(int command) {
    switch (command) {
        case IDM_FIND:
            desk_.OpenFindContact();
            break;
        case IDM_NEXT:
            Step(+1);
            break;
        case IDM_PREVIOUS:
            Step(-1);
            break;
        case IDM_COMPLETE_SCHEDULED:
            desk_.OpenCompleteCall(CallKind::Scheduled, EventTiming());
            break;
        case IDM_COMPLETE_INCOMING:
            desk_.OpenCompleteCall(CallKind::UnscheduledIncoming, EventTiming());
            break;
        case IDM_COMPLETE_OUTGOING:
            desk_.OpenCompleteCall(CallKind::UnscheduledOutgoing, EventTiming());
            break;
        case IDM_DIAL_1:
        case IDM_DIAL_2:
        case IDM_DIAL_3:
            DialPhone(static_cast<std::size_t>(command - IDM_DIAL_1));
            break;
        case IDM_EXIT:
            PostMessageW(handle(), WM_CLOSE, 0, 0);
            break;
        case IDOK:  // Enter
            if (GetFocus() == history_)
                OnListOpened(IDC_HISTORY, ListView_GetNextItem(history_, -1, LVNI_SELECTED));
            for (std::size_t phone = 0; phone < phones_.size(); ++phone) {
                if (GetFocus() == fields_[phones_[phone]].dial) {
                    DialPhone(phone);
                    break;
                }
            }
            break;
        case IDCANCEL:  // Esc closes a further window, never the main one
            if (kind_ == Kind::Further)
                PostMessageW(handle(), WM_CLOSE, 0, 0);
            break;
        default:
            if (command >= IDC_FIRST_DIAL &&
                static_cast<std::size_t>(command - IDC_FIRST_DIAL) < phones_.size()) {
                DialPhone(static_cast<std::size_t>(command - IDC_FIRST_DIAL));
            }
            break;
    }
}

void ContactWindow::DialPhone(std::size_t phone) {
    const std::wstring problem = desk_.dialer().Dial(TextOf(fields_[phones_[phone]].box));
    if (!problem.empty())
        MessageBoxW(handle(), problem.c_str(), productName, MB_ICONEXCLAMATION);
}

void ContactWindow::OnListOpened(int list, int item) {
    const std::vector<Row>& rows = historyItems_.rows;
    if (list == IDC_HISTORY && item >= 0 && static_cast<std::size_t>(item) < rows.size())
        desk_.OpenHistoryItem(rows[static_cast<std::size_t>(item)].back());
}

LRESULT ContactWindow::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SIZE:
            if (history_)
                Arrange();
            return 0;
        case WM_GETMINMAXINFO:
            reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {Scaled(480), Scaled(380)};
            return 0;
        case WM_ACTIVATE:
            // Only a click says that the user went on to work in this window; windows also become
            // active when another one closes.
            if (LOWORD(wParam) == WA_CLICKACTIVE)
                desk_.Use(this);
            return 0;
        case WM_COMMAND:
            desk_.Use(this);
            OnMenu(LOWORD(wParam));
            return 0;
        case WM_NOTIFY: {
            const auto* notification = reinterpret_cast<const NMHDR*>(lParam);
            if (notification->code == LVN_ITEMACTIVATE) {
                OnListOpened(static_cast<int>(notification->idFrom),
                             reinterpret_cast<const NMITEMACTIVATE*>(lParam)->iItem);
            } else if (notification->code == LVN_GETDISPINFOW) {
                TellListText(*reinterpret_cast<const NMLVDISPINFOW*>(lParam));
            }
            return 0;
        }
        case WM_TIMER:
            KillTimer(handle(), wParam);
            SetWindowTextW(statusBar_, L"");
            return 0;
        case WM_NCDESTROY: {
            const HWND window = window_.release();
            SetWindowLongPtrW(window, GWLP_USERDATA, 0);
            desk_.Closed(this);
            return DefWindowProcW(window, message, wParam, lParam);
        }
        default:
            return DefWindowProcW(handle(), message, wParam, lParam);
    }
}

LRESULT CALLBACK ContactWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        auto* created = static_cast<ContactWindow*>(
            reinterpret_cast<const CREATESTRUCTW*>(lParam)->lpCreateParams);
        created->window_.reset(window);
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(created));
    }
    auto* self = reinterpret_cast<ContactWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    return self ? self->Handle(message, wParam, lParam)
                : DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace practice
