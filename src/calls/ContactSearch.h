#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace corvane {

class DataStream;
class Form;
class Macro;
class MessageBoxes;
class StatusWriter;
class WindowCommands;

// Whether the search tells of a find in GoldMine's status bar too.
enum class ShowInGoldMine { No, Yes };

// Finds the contact of the caller ID and brings it up in GoldMine: the open record first, then
// GoldMine's own phone search, then Additional Contacts.
class ContactSearch {
public:
    ContactSearch(Form& form, Macro& macro, DataStream& dataStream, WindowCommands& windows,
                  StatusWriter& status, MessageBoxes& boxes);

    [[nodiscard]] bool SearchContact(ShowInGoldMine show);

private:
    [[nodiscard]] bool FindContact(ShowInGoldMine show);
    [[nodiscard]] bool SearchCurrentRecord(ShowInGoldMine show);
    // The account of the one Additional Contact that has the number; of all accounts when the
    // account number is empty.
    [[nodiscard]] std::optional<std::wstring> SearchAdditionalContacts(
        std::wstring_view accountNumber);
    void PositionToPrimaryRecord(std::wstring_view accountNumber, bool inNewWindow);
    [[nodiscard]] bool PositionInNewWindow(std::wstring_view accountNumber);
    [[nodiscard]] bool PositionInCurrentWindow(std::wstring_view accountNumber);
    void ReportFound(std::wstring_view where, ShowInGoldMine show);
    void ShowMessageInGoldMine(std::wstring_view message);
    [[nodiscard]] const std::wstring& cid() const;

    Form& form_;
    Macro& macro_;
    DataStream& dataStream_;
    WindowCommands& windows_;
    StatusWriter& status_;
    MessageBoxes& boxes_;
};

}  // namespace corvane
