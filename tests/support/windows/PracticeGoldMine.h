#pragma once

#include <filesystem>
#include <string>

#include "support/Lines.h"
#include "support/windows/GoldMineData.h"
#include "support/windows/Process.h"

namespace test_support {

// The two builds of the practice GoldMine: of the other one, every name and number that its clients
// could know is different.
inline constexpr char ordinaryGoldMine[] = "gmw.exe";
inline constexpr char otherGoldMine[] = "other\\gmw.exe";

void RegisterGoldMine(const std::filesystem::path& program);
void UnregisterGoldMine(const std::filesystem::path& program);

// A running practice GoldMine with a fresh database in its data folder, and no main window shown.
class PracticeGoldMine {
public:
    // Waits until clients can connect. The program stands where it was built or where it was
    // copied.
    PracticeGoldMine(std::wstring program, std::wstring dataFolder, const std::string& options);
    PracticeGoldMine(const PracticeGoldMine&) = delete;
    PracticeGoldMine& operator=(const PracticeGoldMine&) = delete;
    ~PracticeGoldMine();  // closes it if it still runs

    bool running() const { return process_.running(); }
    // Closes the main window and waits for the program's end.
    void Close();
    // Waits for the end of one that is ending by itself.
    bool WaitForEnd() const { return process_.WaitForEnd(); }

    HWND MainWindow() const;
    // Closes every window but the main one, so that the main one's contact is the current one.
    void CloseOtherWindows() const;
    // One of its windows by the beginning of the title, or nullptr.
    HWND WindowTitled(const std::string& titleStart) const;
    std::string Title(HWND window) const;

    void SetFaults(const std::string& lines) const { data_.SetFaults(lines); }
    // All entries of the journal, unescaped.
    Lines Journal() const;
    // The rows of a statement: columns separated by tabs, unescaped.
    Lines Sql(const std::string& statement) const;
    // These columns of the history item that was added last, separated by tabs; "" when there is
    // none.
    std::string NewestHistory(const std::string& columns) const;

private:
    std::wstring program_;
    GoldMineData data_;
    Process process_;
};

}  // namespace test_support
