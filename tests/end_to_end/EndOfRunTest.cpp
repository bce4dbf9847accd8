// What is left of a run that has ended: of one that ended by itself every test looks at it
// (EndToEndTest::Finish); here are the other ends.
#include <algorithm>

#include "CompleteCallTest.h"
#include "PeFile.h"
#include "support/windows/BuiltFiles.h"
#include "support/windows/KernelHandle.h"

#include <tlhelp32.h>

namespace end_to_end {
namespace {

const std::string lastLine = "[9]: Finished unloading form and closing program.";

class EndOfRunTest : public CompleteCallTest {
protected:
    static bool LogHolds(const std::string& text) {
        return WaitUntil([&] { return LogText().find(text) != std::string::npos; });
    }
    // A run that waits for a dialog that does not come.
    ProgramRun StartWaiting() {
        GoldMine().SetFaults("MenuCommand event never\n");
        ProgramRun run = Start(connected);
        EXPECT_TRUE(LogHolds("to be filled in: 2 second(s)"));
        return run;
    }
    // GoldMine takes no harm from what became of the run before.
    void ExpectTheNextRunAsEver() {
        GoldMine().SetFaults("MenuCommand event before\n");
        const Outcome run = Run(connected);
        EXPECT_EQ(run.log, Log({opening, opened}, {}));
        EXPECT_EQ(run.boxes, Boxes());
    }
};

class GoldMineDiesTest : public EndOfRunTest, public testing::WithParamInterface<const char*> {};

TEST_P(GoldMineDiesTest, TheRunSaysSoAndEndsAndNobodyStartsAnother) {
    GoldMine().SetFaults(std::string("MenuCommand event before\n") + GetParam() + " die\n");
    GoldMineIsSpoilt();

    const Outcome run = Run(connected);

    ASSERT_EQ(run.boxes.size(), 1u);
    EXPECT_TRUE(run.boxes[0].text.starts_with("Lost connection to GoldMine's user interface."));
    EXPECT_EQ(run.log.back(), lastLine);
    EXPECT_EQ(ProcessesOf(L"gmw.exe"), std::vector<DWORD>());
}

INSTANTIATE_TEST_SUITE_P(Commands, GoldMineDiesTest,
                         testing::Values("MenuCommand", "GetActiveWindowsList", "SetControlText",
                                         "RegisterWindowUpDown@2"));

// Another client's command is its end: Wine goes on handing out the class object of a server that
// is killed from outside.
TEST_F(EndOfRunTest, AGoldMineThatDiesWhileItsDialogIsWaitedForIsNotAskedAgain) {
    ProgramRun run = StartWaiting();
    PracticeGoldMine& goldMine = GoldMine();
    goldMine.SetFaults("* die\n");
    RunToEnd(BuiltFile("tests/bare_client.exe"), L"<GMAPI/>");
    EXPECT_TRUE(goldMine.WaitForEnd());
    GoldMineIsSpoilt();

    const Outcome outcome = Finish(run);

    EXPECT_EQ(outcome.boxes, Boxes());
    EXPECT_EQ(outcome.log.back(), lastLine);
    EXPECT_EQ(ProcessesOf(L"gmw.exe"), std::vector<DWORD>());
}

TEST_F(EndOfRunTest, AKilledRunLeavesNothingAndGoldMineGoesOn) {
    ProgramRun run = StartWaiting();
    run.Kill();
    ExpectTheNextRunAsEver();
}

TEST_F(EndOfRunTest, ARunThatIsKilledInACommandLeavesNothingAndGoldMineGoesOn) {
    GoldMine().SetFaults("MenuCommand delay 3000\n");
    ProgramRun run = Start(connected);
    EXPECT_TRUE(LogHolds("Opening Complete Call dialog"));
    run.Kill();
    ExpectTheNextRunAsEver();
}

// What Windows asks and tells every window at logging off; then it ends who is still there.
class LoggedOffTest : public EndOfRunTest {
protected:
    static void LogOff(const ProgramRun& run) {
        std::vector<HWND> windows;
        ForEachWindow(run.processId(), [&](HWND window) {
            windows.push_back(window);
            return true;
        });
        for (const HWND window : windows) {
            // One that goes at that has agreed.
            EXPECT_TRUE(Ask(window, WM_QUERYENDSESSION, 0) || !IsWindow(window))
                << Utf8(ClassOf(window));
        }
        for (const HWND window : windows)
            Ask(window, WM_ENDSESSION, TRUE);
    }

private:
    static DWORD_PTR Ask(HWND window, UINT message, WPARAM wParam) {
        DWORD_PTR answer = FALSE;
        const bool answered =
            SendMessageTimeoutW(window, message, wParam, 0, SMTO_NORMAL, patience, &answer) != 0;
        EXPECT_TRUE(answered || !IsWindow(window)) << "no answer";
        return answer;
    }
};

TEST_F(LoggedOffTest, ARunThatWaitsHoldsNobodyUp) {
    ProgramRun run = StartWaiting();
    LogOff(run);
    run.Kill();
    ExpectTheNextRunAsEver();
}

TEST_F(LoggedOffTest, ARunWithABoxHoldsNobodyUp) {
    GoldMine().SetFaults("Macro:&Version status 0\n");
    ProgramRun run = Start(connected);
    EXPECT_TRUE(WaitUntil([&] { return FindBox(run.processId()) != nullptr; }));
    LogOff(run);
    run.Kill();
    ExpectTheNextRunAsEver();
}

TEST_F(LoggedOffTest, AShownWindowEndsByItself) {
    GoldMine();
    ProgramRun run = Start("");
    run.WaitForWindow();
    EXPECT_TRUE(LogHolds("Process Call button disabled."));
    LogOff(run);
    const Outcome outcome = Finish(run);
    EXPECT_EQ(outcome.log.back(), "[]: Finished unloading form and closing program.");
}

// A thread of the program's begins where no code is.
class CrashTest : public EndOfRunTest {
protected:
    static constexpr const char* module = "CorvaneTo3CX.exe";

    void Crash(const ProgramRun& run) {
        const PeFile file(Wide(programPath));
        const auto data = std::find_if(
            file.sections().begin(), file.sections().end(), [](const IMAGE_SECTION_HEADER& each) {
                return (each.Characteristics & IMAGE_SCN_MEM_EXECUTE) == 0;
            });
        ASSERT_NE(data, file.sections().end());
        char text[16];
        std::snprintf(text, sizeof text, "%08lX", data->VirtualAddress);
        offset_ = text;

        const KernelHandle process(OpenProcess(PROCESS_ALL_ACCESS, FALSE, run.processId()));
        BYTE* const image = ImageOf(run.processId());
        ASSERT_NE(image, nullptr);
        const auto noCode = reinterpret_cast<LPTHREAD_START_ROUTINE>(image + data->VirtualAddress);
        const KernelHandle thread(
            CreateRemoteThread(process.get(), nullptr, 0, noCode, nullptr, 0, nullptr));
        ASSERT_TRUE(thread.valid());
    }
    std::string Line(const std::string& identifier) const {
        return "[" + identifier + "]: Program crashed: exception 0xC0000005 in " + module +
               " at offset 0x" + offset_ + ".";
    }

private:
    static BYTE* ImageOf(DWORD processId) {
        const KernelHandle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPMODULE, processId));
        MODULEENTRY32W entry{};
        entry.dwSize = sizeof entry;
        return Module32FirstW(snapshot.get(), &entry) ? entry.modBaseAddr : nullptr;
    }

    std::string offset_;
};

TEST_F(CrashTest, LeavesItsLineAndNothingElseAndGoldMineGoesOn) {
    ProgramRun run = StartWaiting();
    Crash(run);
    const Outcome outcome = Finish(run, {}, EXCEPTION_ACCESS_VIOLATION);
    EXPECT_EQ(std::count(outcome.log.begin(), outcome.log.end(), Line("9")), 1);
    EXPECT_EQ(std::count(outcome.log.begin(), outcome.log.end(), lastLine), 0);
    ExpectTheNextRunAsEver();
}

TEST_F(CrashTest, LeavesItsLineWithTheLogOffToo) {
    Set("chkWriteLog", "0");
    GoldMine();
    ProgramRun run = Start("");
    run.WaitForWindow();
    Crash(run);
    const Outcome outcome = Finish(run, {}, EXCEPTION_ACCESS_VIOLATION);
    EXPECT_EQ(outcome.log, Lines{Line("")});
}

}  // namespace
}  // namespace end_to_end
