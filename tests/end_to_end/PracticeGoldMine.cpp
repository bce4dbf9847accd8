#include "PracticeGoldMine.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "Files.h"

namespace end_to_end {
namespace {

constexpr DWORD closingTime = 10'000;

bool IsMainWindow(HWND window) {
    return GetMenu(window) != nullptr;
}

Lines UnescapedLines(const std::wstring& file) {
    Lines lines = SplitLines(ReadFileText(file).value_or(""), "\n");
    for (std::string& line : lines) {
        line = Unescaped(line);
    }
    return lines;
}

// Contact windows and dialogs; Windows itself gives a process further ones, which are not shown.
std::vector<HWND> OtherWindows(DWORD processId) {
    std::vector<HWND> windows;
    ForEachWindow(processId, [&](HWND window) {
        if (IsWindowVisible(window) && !IsMainWindow(window)) {
            windows.push_back(window);
        }
        return true;
    });
    return windows;
}

}  // namespace

void RegisterGoldMine(const std::string& program) {
    EXPECT_EQ(RunToEnd(StandinFile(program), L"/RegServer"), 0u);
}

void UnregisterGoldMine(const std::string& program) {
    EXPECT_EQ(RunToEnd(StandinFile(program), L"/UnregServer"), 0u);
}

PracticeGoldMine::PracticeGoldMine(const std::wstring& program, std::wstring dataFolder,
                                   const std::string& options)
    : program_(program), dataFolder_(std::move(dataFolder)) {
    static int count = 0;
    const std::wstring name = L"end-to-end tests " + std::to_wstring(GetCurrentProcessId()) + L"-" +
                              std::to_wstring(++count);
    const KernelHandle ready(CreateEventW(nullptr, TRUE, FALSE, name.c_str()));
    process_ = Process(program, L"/Fresh /Hidden /Data:" + dataFolder_ + L" \"/ReadyEvent:" + name +
                                    L"\" " + Wide(options));
    EXPECT_EQ(WaitForSingleObject(ready.get(), patience), WAIT_OBJECT_0)
        << "the practice GoldMine does not get ready";
}

PracticeGoldMine::~PracticeGoldMine() {
    if (!process_.running()) {
        return;
    }
    ForEachWindow(process_.id(), [](HWND window) {
        if (IsMainWindow(window)) {
            PostMessageW(window, WM_CLOSE, 0, 0);
        }
        return true;
    });
    EXPECT_TRUE(process_.WaitForEnd(patience)) << "the practice GoldMine does not close";
}

void PracticeGoldMine::CloseOtherWindows() const {
    EXPECT_TRUE(WaitUntil([this] {
        const std::vector<HWND> windows = OtherWindows(process_.id());
        for (const HWND window : windows) {
            SendMessageTimeoutW(window, WM_CLOSE, 0, 0, SMTO_ABORTIFHUNG, closingTime, nullptr);
        }
        return windows.empty();
    }));
}

HWND PracticeGoldMine::WindowTitled(const std::string& titleStart) const {
    HWND found = nullptr;
    ForEachWindow(process_.id(), [&](HWND window) {
        if (Title(window).starts_with(titleStart)) {
            found = window;
        }
        return found == nullptr;
    });
    return found;
}

void PracticeGoldMine::SetFaults(const std::string& lines) const {
    WriteFileText(dataFolder_ + L"faults.txt", lines);
}

Lines PracticeGoldMine::Journal() const {
    return UnescapedLines(dataFolder_ + L"journal.txt");
}

Lines PracticeGoldMine::Sql(const std::string& statement) const {
    const std::wstring out = dataFolder_ + L"rows.txt";
    EXPECT_EQ(RunToEnd(program_,
                       L"/Data:" + dataFolder_ + L" \"/Sql:" + Wide(statement) + L"\" /Out:" + out),
              0u)
        << statement;
    return UnescapedLines(out);
}

std::string PracticeGoldMine::NewestHistory(const std::string& columns) const {
    const Lines rows = Sql("select " + columns + " from ContHist order by rowid desc limit 1");
    return rows.empty() ? "" : rows[0];
}

}  // namespace end_to_end
