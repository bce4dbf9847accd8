#pragma once

#include <string>

#include "windows/DialogWindow.h"

namespace practice {

// Shows one history item.
class HistoryItemDialog : public DialogWindow {
public:
    HistoryItemDialog(Desk& desk, const std::wstring& recordId);

private:
    bool OnCommand(int controlId, int notification) override;
};

}  // namespace practice
