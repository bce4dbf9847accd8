#pragma once

#include <windows.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "data/Database.h"
#include "events/EventRaiser.h"
#include "shared/Options.h"

namespace practice {

class ContactWindow;
class Dialer;
class DialogWindow;

// The three kinds of Complete Call.
enum class CallKind { Scheduled, UnscheduledIncoming, UnscheduledOutgoing };

// The kind that a menu command of this name opens.
std::optional<CallKind> CallKindOf(std::wstring_view menuCommand);

// The windows of the practice GoldMine, and which records they show.
class Desk {
public:
    Desk(const Options& options, Database& database, EventRaiser& events, Dialer& dialer);
    Desk(const Desk&) = delete;
    Desk& operator=(const Desk&) = delete;
    ~Desk();

    // Makes the main window; closing it ends the message loop.
    void Open();
    // Serves messages until the main window is closed.
    void Run();

    // The account in the contact window last used; nothing when no contact is open.
    [[nodiscard]] std::optional<std::wstring> CurrentAccount() const;
    void ShowInCurrentWindow(const std::wstring& account);
    void ShowInNewWindow(const std::wstring& account);
    // Shows the contacts' data anew.
    void RefreshContacts();

    // The message disappears after the seconds given; 0 means that it stays.
    void ShowStatus(const std::wstring& message, long seconds);

    // The history record last inserted or opened; "" when there is none.
    [[nodiscard]] const std::wstring& CurrentHistory() const { return currentHistory_; }
    void SetCurrentHistory(const std::wstring& recordId) { currentHistory_ = recordId; }

    // Opens the Complete Call dialog for the current contact; false when no contact is open.
    bool OpenCompleteCall(CallKind kind, const EventTiming& timing);
    // Opens a history item in a window; false when there is none with this record id.
    bool OpenHistoryItem(const std::wstring& recordId);
    void OpenFindContact();

    // For the windows themselves.
    [[nodiscard]] const Options& options() const { return options_; }
    Database& database() { return database_; }
    Dialer& dialer() { return dialer_; }
    void Use(ContactWindow* window) { current_ = window; }
    void Closed(ContactWindow* window);
    void Closed(DialogWindow* dialog);
    void WindowWentDown(const std::wstring& windowName, HWND window);

private:
    bool ServedByDialog(MSG& message);

    const Options& options_;
    Database& database_;
    EventRaiser& events_;
    Dialer& dialer_;
    std::unique_ptr<ContactWindow> main_;
    std::vector<std::unique_ptr<ContactWindow>> others_;
    std::vector<std::unique_ptr<DialogWindow>> dialogs_;
    // Windows that were destroyed; their objects go when no message of theirs is being served.
    std::vector<std::unique_ptr<ContactWindow>> closedContacts_;
    std::vector<std::unique_ptr<DialogWindow>> closedDialogs_;
    ContactWindow* current_ = nullptr;
    std::wstring currentHistory_;
};

}  // namespace practice
