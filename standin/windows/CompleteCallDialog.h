#pragma once

#include <string>

#include "windows/Desk.h"
#include "windows/DialogWindow.h"

namespace practice {

// Completes a call: its reference and notes become a history item when the user presses Complete.
class CompleteCallDialog : public DialogWindow {
public:
    CompleteCallDialog(Desk& desk, HWND owner, CallKind kind, std::wstring account);

private:
    bool OnCommand(int controlId, int notification) override;
    void OnClosed() override;
    void Save();

    CallKind kind_;
    std::wstring account_;
};

}  // namespace practice
