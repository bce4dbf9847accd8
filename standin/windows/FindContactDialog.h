#pragma once

#include <string>
#include <vector>

#include "windows/DialogWindow.h"

namespace practice {

// Finds contacts by a part of their name, company or phone number, and shows the one chosen.
class FindContactDialog : public DialogWindow {
public:
    explicit FindContactDialog(Desk& desk);

private:
    bool OnCommand(int controlId, int notification) override;
    void Search();
    void ShowChosen();

    std::vector<std::wstring> accounts_;  // of the entries in the list
};

}  // namespace practice
