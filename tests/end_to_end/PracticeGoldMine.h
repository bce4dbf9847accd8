#pragma once

#include <string>

#include "Process.h"
#include "Text.h"

namespace end_to_end {

// The two builds of the practice GoldMine: of the other one, every name and number that its clients
// could know is different.
inline constexpr char ordinaryGoldMine[] = "gmw.exe";
inline constexpr char otherGoldMine[] = "other\\gmw.exe";

void RegisterGoldMine(const std::string& program);
void UnregisterGoldMine(const std::string& program);

// A running practice GoldMine with a fresh database in its data folder, and no main window shown.
class PracticeGoldMine {
public:
    // Waits until clients can connect. The program stands where it was built or where it was
    // copied.
    PracticeGoldMine(const std::wstring& program, std::wstring dataFolder,
                     const std::string& options);
    PracticeGoldMine(const PracticeGoldMine&) = delete;
    PracticeGoldMine& operator=(const PracticeGoldMine&) = delete;
    ~PracticeGoldMine();

    bool running() const { return process_.running(); }
    // Closes every window but the main one, so that the main one's contact is the current one.
    void CloseOtherWindows() const;
    // One of its windows by the beginning of the title, or nullptr.
    HWND WindowTitled(const std::string& titleStart) const;
    std::string Title(HWND window) const { return Utf8(WindowTextOf(window)); }

    void SetFaults(const std::string& lines) const;
    // All entries of the journal: "> " commands, "< " replies, "! " events, "# " notes.
    Lines Journal() const;
    // The rows of a statement: columns separated by tabs.
    Lines Sql(const std::string& statement) const;
    // These columns of the history item that was added last, separated by tabs; "" when there is
    // none.
    std::string NewestHistory(const std::string& columns) const;

private:
    std::wstring program_;
    std::wstring dataFolder_;
    Process process_;
};

}  // namespace end_to_end
