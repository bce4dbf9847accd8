// A whole run with any command line on any stored settings: it loads them all or says what it
// could not load; it starts nothing but 3CX's dialler, with digits; it saves what it loaded.
//
// First line: the arguments; then one setting a line, NAME=TEXT. "\0" stands for a NUL.

#include <string>

#include "fuzz/Input.h"
#include "settings/OptionText.h"
#include "settings/SettingsCatalogue.h"
#include "unit/ProgramFixture.h"
#include "util/Text.h"

namespace {

using namespace corvane;
using namespace corvane::test;

constexpr auto npos = std::wstring::npos;

// GoldMine says yes to everything that it has no better answer for.
std::wstring Answer(const FakeGoldMine& goldMine, const std::wstring& command) {
    const auto known = goldMine.answers.find(command);
    if (known != goldMine.answers.end())
        return known->second;
    const std::wstring call = command.substr(0, command.find_first_of(L"/>"));
    return call + L"><status code=\"1\">1</status></GMAPI>";
}

void StoreSettings(Input& input, FakeSurroundings& around) {
    while (!input.empty()) {
        const std::wstring line = ReplaceAll(input.Line(), L"\\0", std::wstring_view(L"\0", 1));
        const std::size_t equals = line.find(L'=');
        if (equals != npos)
            around.StoreOption(line.substr(0, equals), line.substr(equals + 1));
    }
}

void ExpectValidOptions(const Form& form) {
    for (const Control* each : form.controls()) {
        if (each->spec().kind == ControlKind::CheckBox) {
            const int value = static_cast<const CheckBox*>(each)->value();
            EXPECT_TRUE(value >= CheckBox::unchecked && value <= CheckBox::greyed) << value;
        }
        if (each->spec().kind == ControlKind::OptionButton) {
            int selected = 0;
            for (const OptionButton* member : form.GroupOf(*static_cast<const OptionButton*>(each)))
                selected += member->selected() ? 1 : 0;
            EXPECT_LE(selected, 1);
        }
    }
}

// What was loaded is saved and loaded again without a change.
void ExpectSavedAsLoaded(Program& program, FakeSurroundings& around) {
    around.registry.keys.erase(FakeRegistry::ownKey);
    if (!program.settings.SaveSettings()) {
        EXPECT_EQ(around.boxes.Take().size(), 1U);
        return;
    }
    Form form;
    Settings(form, around.registry, program.status, around.boxes).LoadSettings();
    for (const std::size_t row : savedOptions)
        EXPECT_EQ(OptionText(*form.controls()[row]), OptionText(*program.form.controls()[row]));
}

void ExpectOnlyDigitsDialled(const FakeProcesses& processes) {
    EXPECT_LE(processes.started.size(), 1U);
    for (const std::wstring& command : processes.started) {
        const std::wstring fixed = L"\"C:\\3CX\\CallTriggerCmd.exe\" -cmd makecall:";
        EXPECT_TRUE(command.starts_with(fixed)) << testing::PrintToString(command);
        EXPECT_GT(command.size(), fixed.size());
        EXPECT_EQ(command.find_first_not_of(L"0123456789#*", fixed.size()), npos)
            << testing::PrintToString(command);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    FakeSurroundings around;
    around.InstallThreeCX();
    around.RunGoldMine();
    around.files.folders.insert(L"C:\\Rec");
    around.files.newest = {.name = L"5551234567 (00042).wav", .modified = 45362.5, .filesSeen = 1};
    around.goldMine.answerAll = [&](const std::wstring& command) {
        return Answer(around.goldMine, command);
    };
    const std::wstring arguments = input.Line();
    StoreSettings(input, around);
    Program program(around.Seams(arguments));

    const RunOutcome outcome = program.Run();

    const std::wstring& status = program.form.txtStatus.text();
    const bool loaded =
        status.find(L"LoadSettings: ") == npos && status.find(L"SetUpLog: ") == npos;
    bool refused = false;
    for (const ShownBox& box : around.boxes.Take()) {
        EXPECT_EQ(box.buttons, BoxButtons::Ok);
        if (box.text == L"Error loading configuration. Exiting.") {
            refused = true;
            EXPECT_EQ(outcome, RunOutcome::End);
            EXPECT_NE(status.find(L"Run-time error '"), npos);
        }
        // An error is shown and written.
        if (box.text.starts_with(L"Run-time error '")) {
            EXPECT_NE(status.find(box.text.substr(0, box.text.find(L':'))), npos);
        }
    }
    EXPECT_TRUE(loaded || refused);
    ExpectOnlyDigitsDialled(around.processes);
    int historyItems = 0;
    for (const std::wstring& command : around.goldMine.commands)
        historyItems += command.starts_with(L"<GMAPI call=\"InsHist\">") ? 1 : 0;
    EXPECT_LE(historyItems, 1);
    EXPECT_TRUE(outcome == RunOutcome::WindowShown || !around.goldMine.connected());
    EXPECT_EQ(around.registry.openHandles, 0);
    if (loaded) {
        ExpectValidOptions(program.form);
        ExpectSavedAsLoaded(program, around);
    }
    return 0;
}
