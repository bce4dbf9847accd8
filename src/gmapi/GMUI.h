#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "seams/GoldMine.h"
#include "seams/XPathReader.h"
#include "util/RuntimeError.h"

namespace corvane {

class Clock;
class Form;
class MessageBoxes;
class StatusWriter;

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

    // The text of one node of a reply; empty when there is none or the reply is not XML.
    [[nodiscard]] std::wstring SelectNode(const std::wstring& reply,
                                          const std::wstring& expression) const;

    // One node with its white space as it stands; nothing when the reply is not XML.
    [[nodiscard]] std::optional<std::wstring> SelectNodeAsItStands(const std::wstring& reply,
                                                                   const std::wstring& expression,
                                                                   NodeForm form) const;

    // The error of the last command that the user was told of; nothing when there was none.
    [[nodiscard]] const std::optional<RuntimeError>& reportedError() const {
        return reportedError_;
    }

    // The unescaped text of a reply's status element.
    [[nodiscard]] std::wstring StatusValue(const std::wstring& reply) const;

    // From now on the object is created only while a client runs, which the function tells:
    // creating it would start one. Set at the end of the program, by those who know of processes.
    void ConnectOnlyWhile(std::function<bool()> clientRuns) { clientRuns_ = std::move(clientRuns); }

    // Lets the automation object go; the next command creates it afresh.
    void Release() noexcept;

private:
    [[nodiscard]] bool EnsureObject();
    void Remember(const RuntimeError& error);
    void ReportNoObject(const RuntimeError& error);
    void ReportNotLoggedIn(const RuntimeError& error);
    void ReportConnectionLost(const RuntimeError& error, bool inBox);

    GoldMine& goldMine_;
    const XPathReader& reader_;
    Form& form_;
    StatusWriter& status_;
    MessageBoxes& boxes_;
    Clock& clock_;
    std::optional<RuntimeError> reportedError_;
    int lossesTold_ = 0;
    std::function<bool()> clientRuns_;
};

}  // namespace corvane
