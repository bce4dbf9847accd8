#include "ProgramRun.h"

#include <gtest/gtest.h>

#include <map>

#include "Files.h"
#include "Text.h"

namespace end_to_end {
namespace {

// The build writes which name has which control id.
std::map<std::string, int> ReadControlTable() {
    std::map<std::string, int> ids;
    const std::string table = ReadFileText(BuiltFile("controls.tsv")).value_or("");
    for (const std::string& line : SplitLines(table, "\n")) {
        const size_t tab = line.find('\t');
        if (const int id = std::atoi(line.c_str() + tab + 1); id > 0) {
            ids[line.substr(0, tab)] = id;
        }
    }
    return ids;
}

const std::map<std::string, int>& ControlIds() {
    static const std::map<std::string, int> ids = ReadControlTable();
    return ids;
}

struct ControlSearch {
    int id;
    HWND found;
};

BOOL CALLBACK CheckControl(HWND control, LPARAM parameter) {
    auto& search = *reinterpret_cast<ControlSearch*>(parameter);
    if (GetDlgCtrlID(control) == search.id) {
        search.found = control;
    }
    return search.found == nullptr;
}

}  // namespace

ProgramRun::ProgramRun(const std::wstring& program, const std::string& commandLine)
    : process_(program, Wide(commandLine)) {}

HWND ProgramRun::FindMainWindow() const {
    HWND found = nullptr;
    ForEachWindow(process_.id(), [&](HWND window) {
        const auto style = static_cast<DWORD>(GetWindowLongW(window, GWL_STYLE));
        if (IsWindowVisible(window) && (style & WS_CAPTION) == WS_CAPTION &&
            WindowClassOf(window) != L"#32770") {
            found = window;
        }
        return found == nullptr;
    });
    return found;
}

void ProgramRun::Watch() {
    windowShown_ = windowShown_ || FindMainWindow() != nullptr;
}

HWND ProgramRun::WaitForWindow() {
    HWND window = nullptr;
    EXPECT_TRUE(WaitUntil([&] {
        window = FindMainWindow();
        return window != nullptr || !process_.running();
    }));
    EXPECT_NE(window, nullptr) << "no window is shown";
    Watch();
    return window;
}

void ProgramRun::Answer(const std::string& answer) {
    HWND box = nullptr;
    WaitUntil([&] {
        Watch();
        box = FindBox(process_.id());
        return box != nullptr || !process_.running();
    });
    ASSERT_NE(box, nullptr) << "no message box comes";
    boxes_.push_back(ReadBox(box));
    AnswerBox(box, answer);
}

void ProgramRun::Finish(const std::vector<std::string>& answers) {
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
    EXPECT_EQ(process_.exitCode(), 0u);
}

HWND ControlNamed(HWND mainWindow, const std::string& name) {
    const std::map<std::string, int>& ids = ControlIds();
    const auto known = ids.find(name);
    EXPECT_NE(known, ids.end()) << "no control has this name: " << name;
    if (known == ids.end()) {
        return nullptr;
    }
    ControlSearch search{known->second, nullptr};
    EnumChildWindows(mainWindow, CheckControl, reinterpret_cast<LPARAM>(&search));
    EXPECT_NE(search.found, nullptr) << "the window has no control " << name;
    return search.found;
}

std::string NameOfControl(HWND control) {
    for (const auto& [name, id] : ControlIds()) {
        if (control != nullptr && GetDlgCtrlID(control) == id) {
            return name;
        }
    }
    return {};
}

std::string ControlText(HWND mainWindow, const std::string& name) {
    return Utf8(WindowTextOf(ControlNamed(mainWindow, name)));
}

bool ControlEnabled(HWND mainWindow, const std::string& name) {
    return IsWindowEnabled(ControlNamed(mainWindow, name)) != FALSE;
}

void PressControl(HWND mainWindow, const std::string& name) {
    PostMessageW(ControlNamed(mainWindow, name), BM_CLICK, 0, 0);
}

}  // namespace end_to_end
