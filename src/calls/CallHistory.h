#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace corvane {

class Form;
class GMUI;
class Macro;
class MessageBoxes;
class Records;
class StatusWriter;
struct RecordingLinkState;

// Records the call in GoldMine's history for the contact that was found, by inserting the item
// directly; CompleteCallDialog is the other way.
class CallHistory {
public:
    CallHistory(Form& form, GMUI& gmui, Macro& macro, Records& records, StatusWriter& status,
                MessageBoxes& boxes);

    // Inserts the item, writes its notes when a link was prepared, opens it as configured. The
    // stage word names the part of the call: "start", "connection" or "end".
    void SaveHistory(const std::wstring& refText, std::wstring_view stageWord,
                     const RecordingLinkState& link);

private:
    [[nodiscard]] std::optional<std::wstring> InsertCallHistory(const std::wstring& refText);
    [[nodiscard]] bool UpdateHistoryNotes(const std::wstring& identifier,
                                          std::wstring_view notesText);
    [[nodiscard]] bool OpenHistoryItem(const std::wstring& identifier);

    Form& form_;
    GMUI& gmui_;
    Macro& macro_;
    Records& records_;
    StatusWriter& status_;
    MessageBoxes& boxes_;
};

}  // namespace corvane
