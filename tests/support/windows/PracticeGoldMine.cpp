#include "support/windows/PracticeGoldMine.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "support/windows/BuiltFiles.h"
#include "support/windows/Encoding.h"
#include "support/windows/NativeWindow.h"
#include "support/windows/Waiting.h"

namespace test_support {
namespace {

bool IsMainWindow(HWND window) {
    return GetMenu(window) != nullptr;
}

// Contact windows and dialogs; Windows itself gives a process further ones, which are not shown.
std::vector<HWND> OtherWindows(DWORD processId) {
    std::vector<HWND> windows;
    ForEachWindow(processId, [&](HWND window) {
        if (IsWindowVisible(window) && !IsMainWindow(window))
            windows.push_back(window);
        return true;
    });
    return windows;
}

}  // namespace

void RegisterGoldMine(const std::filesystem::path& program) {
    ASSERT_EQ(RunToEnd(StandinFile(program), L"/RegServer"), 0u);
}

void UnregisterGoldMine(const std::filesystem::path& program) {
    ASSERT_EQ(RunToEnd(StandinFile(program), L"/UnregServer"), 0u);
}

PracticeGoldMine::PracticeGoldMine(std::wstring program, std::wstring dataFolder,
                                   const std::string& options)
    : program_(std::move(program)), data_(std::move(dataFolder)) {
    static int count = 0;
    const std::wstring name = L"practice GoldMine ready " + std::to_wstring(GetCurrentProcessId()) +
                              L"-" + std::to_wstring(++count);
    const KernelHandle ready(CreateEventW(nullptr, TRUE, FALSE, name.c_str()));
    process_ = Process(program_, L"/Fresh /Hidden " + data_.option() + L" \"/ReadyEvent:" + name +
                                     L"\" " + Wide(options));
    const HANDLE either[] = {ready.get(), process_.handle()};
    EXPECT_EQ(WaitForMultipleObjects(2, either, FALSE, patience), WAIT_OBJECT_0)
        << "the practice GoldMine does not get ready: " << testing::PrintToString(data_.Journal());
}

PracticeGoldMine::~PracticeGoldMine() {
    if (running())
        Close();
}

void PracticeGoldMine::Close() {
    PostMessageW(MainWindow(), WM_CLOSE, 0, 0);
    // Clients in this process are called while it closes.
    if (!PumpUntil([this] { return !running(); })) {
        ADD_FAILURE() << "the practice GoldMine does not close";
        process_.Terminate();
        return;
    }
    EXPECT_EQ(process_.exitCode(), 0u);
}

HWND PracticeGoldMine::MainWindow() const {
    HWND found = nullptr;
    ForEachWindow(process_.id(), [&](HWND window) {
        if (IsMainWindow(window))
            found = window;
        return !found;
    });
    return found;
}

void PracticeGoldMine::CloseOtherWindows() const {
    EXPECT_TRUE(WaitUntil([this] {
        const std::vector<HWND> windows = OtherWindows(process_.id());
        for (const HWND window : windows)
            SendMessageTimeoutW(window, WM_CLOSE, 0, 0, SMTO_NORMAL, patience, nullptr);
        return windows.empty();
    }));
}

HWND PracticeGoldMine::WindowTitled(const std::string& titleStart) const {
    HWND found = nullptr;
    ForEachWindow(process_.id(), [&](HWND window) {
        if (Title(window).starts_with(titleStart))
            found = window;
        return !found;
    });
    return found;
}

std::string PracticeGoldMine::Title(HWND window) const {
    return Utf8(TextOf(window));
}

Lines PracticeGoldMine::Journal() const {
    return UnescapedLines(data_.Journal());
}

Lines PracticeGoldMine::Sql(const std::string& statement) const {
    return UnescapedLines(SplitLines(data_.Sql(program_, statement), "\n"));
}

std::string PracticeGoldMine::NewestHistory(const std::string& columns) const {
    const Lines rows = Sql("select " + columns + " from ContHist order by rowid desc limit 1");
    return rows.empty() ? "" : rows[0];
}

}  // namespace test_support
