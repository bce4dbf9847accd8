// Dialing: how the practice GoldMine runs the instruction of the user's INI file.
#include "PracticeGoldMineTest.h"

namespace standin_tests {
namespace {

constexpr int firstDialButton = 1310;
constexpr int dialPhone1 = 204;  // the menu's command

// A call trigger in a folder of its own stands for the program that dials.
class DialTest : public PracticeGoldMineTest {
protected:
    DialTest() { CopyFileTo(StandinFile(L"CallTriggerCmd.exe"), program_); }

    void Instruct(const std::wstring& instruction, const std::wstring& user = L"MASTER") {
        WriteFileText(data_.file(user + L".INI"),
                      "[GoldMine]\r\nDDEDial=&Dial,,wrong.exe %s\r\n"
                      "[Modem]\r\nDeviceID=0\r\nDDEDial=" +
                          Utf8(instruction) + "\r\n");
    }
    std::wstring Switches(const std::wstring& number) const {
        return data_.option() + L" \"/Dial:" + number + L"\"";
    }
    // One number dialed by gmw's own switch; answers its exit code.
    DWORD DialBySwitch(const std::wstring& number) {
        return RunToEnd(StandinFile(ordinaryGoldMine), L"/Hidden " + Switches(number));
    }
    // The command lines that the program was started with.
    Lines Dialed() const {
        return SplitLines(ReadFileText(folder_.file(L"CallTriggerCmd.log")).value_or(""), "\n");
    }
    bool WaitUntilDialed(size_t count) {
        return PumpUntil([&] { return Dialed().size() >= count; });
    }
    std::string Recorded(const std::wstring& arguments) const {
        return EscapedLine(Utf8(program_ + arguments));
    }
    void Press(HWND window, int control) {
        PostMessageW(window, WM_COMMAND, MAKEWPARAM(control, BN_CLICKED),
                     reinterpret_cast<LPARAM>(GetDlgItem(window, control)));
    }
    // The message box of the practice GoldMine answered with OK; answers its text.
    std::string AnswerBox() {
        const std::wstring out = data_.file(L"answer.txt");
        const Process answer(StandinFile(L"answer.exe"), L"\"Practice GoldMine\" OK", out);
        EXPECT_TRUE(answer.WaitForEnd());
        std::string text = ReadFileText(out).value_or("");
        std::erase(text, '\r');
        EXPECT_EQ(answer.exitCode(), 0u) << text;
        return text;
    }

    TemporaryFolder folder_{L"standin-dial"};
    const std::wstring program_ = folder_.file(L"CallTriggerCmd.exe");
};

TEST_F(DialTest, WhatStandsBehindTheSecondCommaIsRunWithTheNumber) {
    struct Case {
        std::wstring instruction;
        const wchar_t* number;
        std::string recorded;
    };
    const Case cases[] = {
        {L"&Dial,," + program_ + L" %s", L"(555)123-4567", Recorded(L" (555)123-4567")},
        {L"&Dial,," + program_ + L" %s", L"+44 20 7946 0000 x1,2 %s",
         Recorded(L" +44 20 7946 0000 x1,2 %s")},
        {L"&dial,what,  " + program_ + L" -n %s -u %s", L"12", Recorded(L" -n 12 -u %s")},
        {L"&Dial,," + program_, L"12", Recorded(L"")},
        {L"&Dial,,\"" + program_ + L"\" %s", L"12", "\"" + Recorded(L"") + "\" 12"},
    };
    for (const Case& entry : cases) {
        // The call trigger of the case before may still be ending.
        DeleteFileWhenFree(folder_.file(L"CallTriggerCmd.log"));
        Instruct(entry.instruction);

        EXPECT_EQ(DialBySwitch(entry.number), 0u);

        EXPECT_TRUE(WaitUntilDialed(1)) << Utf8(entry.instruction);
        EXPECT_EQ(Dialed(), std::vector<std::string>{entry.recorded});
        EXPECT_EQ(data_.Journal().back(), "# dial " + entry.recorded);
    }
}

TEST_F(DialTest, TheUserWhoIsLoggedInHasHisOwnInstruction) {
    Instruct(L"&Dial,," + program_ + L" master %s");
    Instruct(L"&Dial,," + program_ + L" anna %s", L"ANNA");

    EXPECT_EQ(RunToEnd(StandinFile(ordinaryGoldMine), L"/Hidden /User:ANNA " + Switches(L"12")),
              0u);

    EXPECT_TRUE(WaitUntilDialed(1));
    EXPECT_EQ(Dialed().front(), Recorded(L" anna 12"));
}

TEST_F(DialTest, DialingDoesNotWaitForTheProgram) {
    folder_.Write(L"CallTriggerCmd.delay", "120000");
    Instruct(L"&Dial,," + program_ + L" %s");
    const Process dialing(StandinFile(ordinaryGoldMine), Switches(L"12"));

    ASSERT_TRUE(dialing.WaitForEnd());

    EXPECT_EQ(dialing.exitCode(), 0u);
    EXPECT_TRUE(WaitUntilDialed(1));
    const Process program = Process::ChildOf(dialing.id(), L"CallTriggerCmd.exe");
    EXPECT_TRUE(program.started());
    EXPECT_EQ(program.exitCode(), static_cast<DWORD>(STILL_ACTIVE));
}

TEST_F(DialTest, WhatCannotBeDialedIsToldToTheUser) {
    struct Case {
        const wchar_t* instruction;
        const wchar_t* number;
        std::string message;
    };
    const std::string unreadable = "GoldMine cannot dial by this DDEDial instruction.\n\n";
    const std::string unstartable = "The program that dials cannot be started (error ";
    const Case cases[] = {
        {L"", L"12",
         "GoldMine does not know how to dial: there is no DDEDial instruction in section [Modem] "
         "of this file.\n\n" +
             Utf8(data_.file(L"MASTER.INI"))},
        {L"C:\\dial.exe %s", L"12", unreadable + "C:\\dial.exe %s"},
        {L"&Dial,C:\\dial.exe %s", L"12", unreadable + "&Dial,C:\\dial.exe %s"},
        {L"&Dial,,", L"12", unreadable + "&Dial,,"},
        {L"&Dial,,C:\\no such\\dial.exe %s", L"12",
         unstartable + "2).\n\nC:\\no such\\dial.exe 12"},
        {L"&Dial,,C:\\dial.exe %s", L" ", "There is no number to dial."},
    };
    for (const Case& entry : cases) {
        Instruct(entry.instruction);
        const Process dialing(StandinFile(ordinaryGoldMine), Switches(entry.number));

        EXPECT_EQ(AnswerBox(), entry.message + "\n[OK]\n");

        EXPECT_TRUE(dialing.WaitForEnd());
        EXPECT_EQ(dialing.exitCode(), 1u);
        EXPECT_EQ(data_.Journal().back().rfind("# not dialed: " + entry.message.substr(0, 20), 0),
                  0u)
            << data_.Journal().back();
    }
}

TEST_F(DialTest, HiddenDialingShowsNoBox) {
    EXPECT_EQ(DialBySwitch(L"12"), 1u);
}

TEST_F(DialTest, EachPhoneOfTheContactHasAButton) {
    Start("/Record:A0002");
    Instruct(L"&Dial,," + program_ + L" %s");

    Press(goldMine().MainWindow(), firstDialButton);
    EXPECT_TRUE(WaitUntilDialed(1));
    Press(goldMine().MainWindow(), firstDialButton + 1);
    EXPECT_TRUE(WaitUntilDialed(2));
    Press(goldMine().MainWindow(), dialPhone1);
    EXPECT_TRUE(WaitUntilDialed(3));

    const std::vector<std::string> expected = {
        Recorded(L" (555)123-4567"), Recorded(L" (206)555-0101"), Recorded(L" (555)123-4567")};
    EXPECT_EQ(Dialed(), expected);
    EXPECT_TRUE(IsWindowEnabled(GetDlgItem(goldMine().MainWindow(), firstDialButton + 1)));
    EXPECT_FALSE(IsWindowEnabled(GetDlgItem(goldMine().MainWindow(), firstDialButton + 2)));
}

TEST_F(DialTest, FurtherContactWindowDialsItsOwnContact) {
    Start();
    Instruct(L"&Dial,," + program_ + L" %s");
    Client client;
    client.Ask(L"CallerID", {{L"Phone", L"(555)123-4567"}, {L"DisplayDialog", L"1"}});

    Press(goldMine().WindowTitled("Brightwater Ceramics"), firstDialButton);

    EXPECT_TRUE(WaitUntilDialed(1));
    EXPECT_EQ(Dialed().front(), Recorded(L" (555)123-4567"));
}

TEST_F(DialTest, InstructionIsReadWhenItIsNeeded) {
    Start("/Record:A0002");
    Press(goldMine().MainWindow(), firstDialButton);
    EXPECT_EQ(AnswerBox().rfind("GoldMine does not know how to dial", 0), 0u);

    const std::wstring instruction = L"&Dial,," + program_ + L" %s";
    WritePrivateProfileStringW(L"Modem", L"DDEDial", instruction.c_str(),
                               data_.file(L"MASTER.INI").c_str());
    Press(goldMine().MainWindow(), firstDialButton);

    EXPECT_TRUE(WaitUntilDialed(1));
    EXPECT_EQ(Dialed(), std::vector<std::string>{Recorded(L" (555)123-4567")});
}

TEST_F(DialTest, NumberMustBeGiven) {
    EXPECT_EQ(RunToEnd(StandinFile(ordinaryGoldMine), L"/Hidden /Dial:"), 2u);
}

}  // namespace
}  // namespace standin_tests
