#pragma once

#include <string>

#include "seams/GoldMine.h"
#include "seams/XPathReader.h"

namespace corvane {

class Clock;
class Form;
class MessageBoxes;
class StatusWriter;
struct RuntimeError;

// The one road to GoldMine: sends a command, times it, tells the user when GoldMine cannot be
// reached.
class GMUI {
public:
    GMUI(GoldMine& goldMine, const XPathReader& reader, Form& form, StatusWriter& status,
         MessageBoxes& boxes, Clock& clock);

    // GoldMine's reply; "False" when the automation object could not be had, empty when the call
    // was refused or the connection was lost (the user has been told). Other errors are raised
    // with "GMUI_Execute: " before their source.
    [[nodiscard]] std::wstring GMUI_Execute(const std::wstring& command);

    // One node of a reply, see XPathReader.
    [[nodiscard]] std::wstring SelectNode(const std::wstring& reply, const std::wstring& expression,
                                          NodeForm form = NodeForm::Text) const;

    // The unescaped text of a reply's status element.
    [[nodiscard]] std::wstring StatusValue(const std::wstring& reply) const;

    // Lets the automation object go; the next command creates it afresh.
    void Release() noexcept;

private:
    bool EnsureObject();
    void ReportNoObject(const RuntimeError& error);
    void ReportNotLoggedIn(const RuntimeError& error);
    void ReportConnectionLost(const RuntimeError& error);

    GoldMine& goldMine_;
    const XPathReader& reader_;
    Form& form_;
    StatusWriter& status_;
    MessageBoxes& boxes_;
    Clock& clock_;
};

}  // namespace corvane
