#include "ProgramRun.h"

#include <gtest/gtest.h>

#include <map>

#include "support/ControlTable.h"
#include "support/windows/BuiltFiles.h"
#include "support/windows/Encoding.h"
#include "support/windows/NativeWindow.h"
#include "support/windows/Waiting.h"

namespace end_to_end {

using namespace test_support;

namespace {

const std::map<std::string, int>& ControlIds() {
    static const std::map<std::string, int> ids = ReadControlIds(BuiltFile("controls.tsv"));
    return ids;
}

}  // namespace

ProgramRun::ProgramRun(const std::wstring& program, const std::string& commandLine)
    : process_(program, Wide(commandLine)) {}

HWND ProgramRun::FindMainWindow() const {
    HWND found = nullptr;
    ForEachWindow(process_.id(), [&](HWND window) {
        const auto style = static_cast<DWORD>(GetWindowLongW(window, GWL_STYLE));
        if (IsWindowVisible(window) && (style & WS_CAPTION) == WS_CAPTION &&
            ClassOf(window) != L"#32770") {
            found = window;
        }
        return !found;
    });
    return found;
}

void ProgramRun::Watch() {
    windowShown_ = windowShown_ || FindMainWindow();
}

HWND ProgramRun::WaitForWindow() {
    HWND window = nullptr;
    EXPECT_TRUE(WaitUntil([&] {
        window = FindMainWindow();
        return window || !process_.running();
    }));
    EXPECT_NE(window, nullptr) << "no window is shown";
    Watch();
    return window;
}

void ProgramRun::Answer(const std::string& answer) {
    HWND box = nullptr;
    EXPECT_TRUE(WaitUntil([&] {
        Watch();
        box = FindBox(process_.id());
        return box || !process_.running();
    }));
    ASSERT_NE(box, nullptr) << "no message box comes";
    boxes_.push_back(ReadBox(box));
    AnswerBox(box, answer);
}

void ProgramRun::Finish(const std::vector<std::string>& answers, DWORD exitCode) {
    const size_t before = boxes_.size();
    const bool ended = WaitUntil([&] {
        Watch();
        if (const HWND box = FindBox(process_.id())) {
            Box seen = ReadBox(box);
            const size_t number = boxes_.size() - before;
            AnswerBox(box, number < answers.size()
                               ? answers[number]
                               : seen.buttons.substr(0, seen.buttons.find(' ')));
            boxes_.push_back(std::move(seen));
        }
        return !process_.running();
    });
    if (!ended) {
        ADD_FAILURE() << "the program does not end";
        process_.Terminate();
        return;
    }
    EXPECT_EQ(process_.exitCode(), exitCode);
    ExpectNoWindow();
}

void ProgramRun::Kill() {
    EXPECT_TRUE(process_.running());
    process_.Terminate();
    ExpectNoWindow();
}

void ProgramRun::ExpectNoWindow() const {
    EXPECT_TRUE(WaitUntil([this] {
        bool none = true;
        ForEachWindow(process_.id(), [&](HWND) { return none = false; });
        return none;
    }));
}

HWND ControlNamed(HWND mainWindow, const std::string& name) {
    const std::map<std::string, int>& ids = ControlIds();
    const auto known = ids.find(name);
    EXPECT_NE(known, ids.end()) << "no control has this name: " << name;
    if (known == ids.end())
        return nullptr;
    const HWND control = ChildWithId(mainWindow, known->second);
    EXPECT_NE(control, nullptr) << "the window has no control " << name;
    return control;
}

std::string NameOfControl(HWND control) {
    for (const auto& [name, id] : ControlIds()) {
        if (control && GetDlgCtrlID(control) == id)
            return name;
    }
    return {};
}

std::string ControlText(HWND mainWindow, const std::string& name) {
    return Utf8(TextOf(ControlNamed(mainWindow, name)));
}

bool ControlEnabled(HWND mainWindow, const std::string& name) {
    return IsWindowEnabled(ControlNamed(mainWindow, name)) != FALSE;
}

void PressControl(HWND mainWindow, const std::string& name) {
    PostMessageW(ControlNamed(mainWindow, name), BM_CLICK, 0, 0);
}

}  // namespace end_to_end
