#include "windows/Desk.h"

#include <algorithm>
#include <utility>

#include "windows/CompleteCallDialog.h"
#include "windows/ContactWindow.h"
#include "windows/FindContactDialog.h"
#include "windows/HistoryItemDialog.h"
#include "windows/ResourceIds.h"
#include "windows/WindowList.h"

namespace practice {
namespace {

template <typename Window>
void MoveTo(std::vector<std::unique_ptr<Window>>& closed,
            std::vector<std::unique_ptr<Window>>& open, Window* window) {
    const auto found = std::find_if(open.begin(), open.end(),
                                    [&](const auto& entry) { return entry.get() == window; });
    if (found != open.end()) {
        closed.push_back(std::move(*found));
        open.erase(found);
    }
}

}  // namespace

std::optional<CallKind> CallKindOf(std::wstring_view menuCommand) {
    if (menuCommand == L"CompleteScheduledCall")
        return CallKind::Scheduled;
    if (menuCommand == L"CompleteUnscheduledIncomingCall")
        return CallKind::UnscheduledIncoming;
    if (menuCommand == L"CompleteUnscheduledOutgoingCall")
        return CallKind::UnscheduledOutgoing;
    return std::nullopt;
}

Desk::Desk(const Options& options, Database& database, EventRaiser& events, Dialer& dialer)
    : options_(options), database_(database), events_(events), dialer_(dialer) {}

Desk::~Desk() {
    // Windows that are still open must not report to a desk that is going.
    dialogs_.clear();
    others_.clear();
    main_.reset();
}

void Desk::Open() {
    main_ = std::make_unique<ContactWindow>(*this, ContactWindow::Kind::Main);
    current_ = main_.get();
    if (!options_.noRecord) {
        const auto account =
            options_.record.empty()
                ? database_.Value(L"select AccountNo from Contact1 order by rowid")
                : database_.Value(L"select AccountNo from Contact1 where AccountNo = ?",
                                  {options_.record});
        main_->Show(account.value_or(L""));
    }
    if (!options_.hidden)
        ShowWindow(main_->handle(), SW_SHOWDEFAULT);
}

void Desk::Run() {
    const HACCEL accelerators =
        LoadAcceleratorsW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDR_ACCELERATORS));
    MSG message{};
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        // The accelerators are the main window's alone.
        const bool forMain =
            message.hwnd == main_->handle() || IsChild(main_->handle(), message.hwnd) != FALSE;
        const bool accelerated =
            forMain && TranslateAcceleratorW(main_->handle(), accelerators, &message) != 0;
        if (!accelerated && !ServedByDialog(message)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
        closedContacts_.clear();
        closedDialogs_.clear();
    }
}

bool Desk::ServedByDialog(MSG& message) {
    for (const auto& dialog : dialogs_) {
        if (IsDialogMessageW(dialog->handle(), &message))
            return true;
    }
    for (const auto& window : others_) {
        if (IsDialogMessageW(window->handle(), &message))
            return true;
    }
    return IsDialogMessageW(main_->handle(), &message) != FALSE;
}

std::optional<std::wstring> Desk::CurrentAccount() const {
    if (!current_ || current_->account().empty())
        return std::nullopt;
    return current_->account();
}

void Desk::ShowInCurrentWindow(const std::wstring& account) {
    if (current_)
        current_->Show(account);
}

void Desk::ShowInNewWindow(const std::wstring& account) {
    others_.push_back(std::make_unique<ContactWindow>(*this, ContactWindow::Kind::Further));
    current_ = others_.back().get();
    current_->Show(account);
    ShowWindow(current_->handle(), SW_SHOWNORMAL);
}

void Desk::RefreshContacts() {
    if (main_)
        main_->Refresh();
    for (const auto& window : others_)
        window->Refresh();
}

void Desk::ShowStatus(const std::wstring& message, long seconds) {
    if (main_)
        main_->ShowStatus(message, seconds);
}

bool Desk::OpenCompleteCall(CallKind kind, const EventTiming& timing) {
    const std::optional<std::wstring> account = CurrentAccount();
    if (!account)
        return false;
    dialogs_.push_back(
        std::make_unique<CompleteCallDialog>(*this, current_->handle(), kind, *account));
    events_.Raise(completeCallWindowName, true, dialogs_.back()->handle(), timing);
    return true;
}

bool Desk::OpenHistoryItem(const std::wstring& recordId) {
    if (!database_.Value(L"select RecID from ContHist where RecID = ?", {recordId}))
        return false;
    SetCurrentHistory(recordId);
    dialogs_.push_back(std::make_unique<HistoryItemDialog>(*this, recordId));
    return true;
}

void Desk::OpenFindContact() {
    dialogs_.push_back(std::make_unique<FindContactDialog>(*this));
}

void Desk::Closed(ContactWindow* window) {
    if (window == main_.get()) {
        PostQuitMessage(0);
        current_ = nullptr;
        return;
    }
    if (current_ == window)
        current_ = main_.get();
    MoveTo(closedContacts_, others_, window);
}

void Desk::Closed(DialogWindow* dialog) {
    MoveTo(closedDialogs_, dialogs_, dialog);
}

void Desk::WindowWentDown(const std::wstring& windowName, HWND window) {
    events_.Raise(windowName, false, window, EventTiming());
}

}  // namespace practice
