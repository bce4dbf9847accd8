#pragma once

#include <windows.h>

#include <commctrl.h>

#include <string>
#include <vector>

#include "data/Database.h"
#include "shared/Handles.h"

namespace practice {

class Desk;

// Shows a contact with its additional contacts and its history. The main window is one of these
// with a menu and a status bar.
class ContactWindow {
public:
    enum class Kind { Main, Further };

    ContactWindow(Desk& desk, Kind kind);
    ContactWindow(const ContactWindow&) = delete;
    ContactWindow& operator=(const ContactWindow&) = delete;

    [[nodiscard]] HWND handle() const { return window_.get(); }
    // "" when no contact is open.
    [[nodiscard]] const std::wstring& account() const { return account_; }

    void Show(const std::wstring& account);
    void Refresh();
    void ShowStatus(const std::wstring& message, long seconds);

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);
    void MakeControls();
    HWND MakeControl(const wchar_t* controlClass, const wchar_t* text, DWORD style,
                     DWORD extendedStyle, int id);
    HWND MakeList(int id, const std::vector<const wchar_t*>& columns);
    void Arrange();
    void OnMenu(int command);
    void OnListOpened(int list, int item);
    // A list asks for the text of what it draws: a contact may have thousands of history items.
    void TellListText(const NMLVDISPINFOW& asked) const;
    // Dials Phone1, Phone2 or Phone3, told by its place from 0 on.
    void DialPhone(std::size_t phone);
    void Step(int direction);
    [[nodiscard]] int Scaled(int pixels) const { return MulDiv(pixels, dpi_, 96); }

    struct Field {
        HWND label = nullptr;
        HWND box = nullptr;
        HWND dial = nullptr;  // the button beside a phone number, nullptr elsewhere
    };

    Desk& desk_;
    Kind kind_;
    Owned<HFONT> font_;
    Owned<HWND> window_;
    int dpi_ = 96;
    std::vector<Field> fields_;
    std::vector<std::size_t> phones_;  // which of the fields are phone numbers
    HWND additionalLabel_ = nullptr;
    HWND additional_ = nullptr;
    HWND historyLabel_ = nullptr;
    HWND history_ = nullptr;
    HWND statusBar_ = nullptr;
    std::wstring account_;
    // What the lists show; the last column of the history is the record's id.
    Table additionalContacts_;
    Table historyItems_;
};

}  // namespace practice
