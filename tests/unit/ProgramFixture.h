#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "app/Program.h"
#include "fakes/FakeClock.h"
#include "fakes/FakeCrashLine.h"
#include "fakes/FakeFiles.h"
#include "fakes/FakeFormView.h"
#include "fakes/FakeGoldMine.h"
#include "fakes/FakeHtmlDocument.h"
#include "fakes/FakeMessageBoxes.h"
#include "fakes/FakeProcesses.h"
#include "fakes/FakeRegistry.h"
#include "fakes/TestApartment.h"
#include "fakes/TestXPathReader.h"

namespace corvane::test {

// What the program meets outside of itself; outlives one run of it.
struct FakeSurroundings {
    // 3CXPhone with its plug-in, and its call notifier pointing at this program.
    void InstallThreeCX() {
        registry.Store(L"HKLM\\SOFTWARE\\3CX\\3CXPhone for Windows", L"Path", L"C:\\3CX\\");
        registry.Store(L"HKLM\\SOFTWARE\\3CX\\CRM", L"CallNotifierPath",
                       L"C:\\Corvane\\CorvaneTo3CX.exe");
        files.files[L"C:\\3CX\\CallTriggerCmd.exe"];
        files.files[L"C:\\3CX\\CommandLineAPIPlugin.dll"];
    }
    // A running GoldMine of that version, user ANN, whose INI files ask for no change.
    void RunGoldMine(const std::wstring& version = L"2014.1") {
        processes.RunGoldMine();
        AnswerMacro(L"Version", version);
        AnswerMacro(L"ProgramDataDir", L"C:\\GM\\");
        AnswerMacro(L"UserName", L"ANN");
        files.files[L"C:\\GM\\ANN.INI"];
        files.files[L"C:\\GM\\GM.INI"];
        auto& userIni = iniFiles.files[L"C:\\GM\\ANN.INI"];
        userIni[{L"Modem", L"DeviceID"}] = L"0";
        userIni[{L"Modem", L"DDEDial"}] = L"&Dial,,C:\\Corvane\\CorvaneTo3CX.exe %s";
        userIni[{L"Modem", L"TAPITranslation"}] = L"0";
        iniFiles.files[L"C:\\GM\\GM.INI"][{L"GoldMine", L"HTML_Cal_Notes"}] = L"0";
    }
    // The macro's name without its ampersand.
    void AnswerMacro(const std::wstring& name, const std::wstring& value) {
        goldMine.answers[L"<GMAPI call=\"Macro\"><data name=\"Macro\">&amp;" + name +
                         L"</data></GMAPI>"] =
            L"<GMAPI call=\"Macro\"><status code=\"1\">" + value + L"</status></GMAPI>";
    }
    // A setting that an earlier run saved.
    void StoreOption(const std::wstring& name, const std::wstring& text) {
        registry.Store(FakeRegistry::ownKey, name, text);
    }

    // These seams, for a program with these arguments behind its path in the command line.
    [[nodiscard]] Surroundings Seams(std::wstring arguments) {
        return Seams(std::move(arguments), boxes);
    }
    // With other message boxes.
    [[nodiscard]] Surroundings Seams(std::wstring arguments, MessageBoxes& otherBoxes) {
        return {.info = info,
                .commandLine = std::move(arguments),
                .goldMine = goldMine,
                .xpath = xpath,
                .registry = registry,
                .iniFiles = iniFiles,
                .files = files,
                .processes = processes,
                .shell = shell,
                .clock = clock,
                .crashLine = crashLine,
                .boxes = otherBoxes,
                .newHtmlDocument = [this] { return std::make_unique<FakeHtmlDocument>(html); },
                .view = view};
    }

    TestApartment apartment;
    ProgramInfo info{L"C:\\Corvane", L"CorvaneTo3CX", 1, 0, 1};
    FakeRegistry registry;
    FakeIniFiles iniFiles;
    FakeFileSystem files;
    FakeShell shell;
    FakeProcesses processes;
    FakeClock clock;
    FakeCrashLine crashLine;
    FakeMessageBoxes boxes;
    TestXPathReader xpath;
    FakeGoldMine goldMine;
    HtmlScript html;
    FakeFormView view;
};

// Base of the tests of whole runs: set up `around`, make a program, run it.
class ProgramTest : public testing::Test {
protected:
    // The program with these arguments; it has not run yet. An earlier one is gone.
    Program& Make(const std::wstring& arguments = L"") {
        program_.reset();
        program_.emplace(around.Seams(arguments));
        return *program_;
    }
    [[nodiscard]] Program& program() { return *program_; }

    FakeSurroundings around;

private:
    std::optional<Program> program_;
};

}  // namespace corvane::test
