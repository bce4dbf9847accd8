// The programs beside the practice GoldMine.
#include <chrono>
#include <future>
#include <utility>

#include "PracticeGoldMineTest.h"

namespace standin_tests {
namespace {

// Copies of the programs in a folder of their own, so that the log is theirs alone.
class CompanionTest : public testing::Test {
protected:
    void SetUp() override {
        for (const wchar_t* name : {L"CallTriggerCmd.exe", L"ring.exe", L"answer.exe"})
            CopyFileTo(StandinFile(name), File(name));
    }
    std::wstring File(const std::wstring& name) const { return folder_.file(name); }
    DWORD Run(const std::wstring& program, const std::wstring& arguments) {
        const Process process(File(program), arguments, File(L"output.txt"));
        EXPECT_TRUE(process.WaitForEnd());
        return process.exitCode();
    }
    // What the program that ran last wrote.
    std::string Output() const {
        std::string text = ReadFileText(File(L"output.txt")).value_or("");
        std::erase(text, '\r');
        return text;
    }

    TemporaryFolder folder_{L"standin tests"};
};

TEST_F(CompanionTest, CallTriggerRecordsItsWholeCommandLine) {
    const std::string escaped = EscapedLine("\"" + Utf8(File(L"CallTriggerCmd.exe")) + "\" ");

    EXPECT_EQ(Run(L"CallTriggerCmd.exe", L"-cmd makecall:5551234567"), 0u);
    EXPECT_EQ(Run(L"CallTriggerCmd.exe", L"\u017c \"two words\""), 0u);

    EXPECT_EQ(ReadFileText(File(L"CallTriggerCmd.log")),
              escaped + "-cmd makecall:5551234567\n" + escaped + "\xC5\xBC \"two words\"\n");
}

TEST_F(CompanionTest, CallTriggerTakesItsTimeWhenAsked) {
    WriteFileText(File(L"CallTriggerCmd.delay"), "600\r\n");
    const ULONGLONG start = GetTickCount64();

    EXPECT_EQ(Run(L"CallTriggerCmd.exe", L""), 0u);

    EXPECT_GE(GetTickCount64() - start, 550u);
}

TEST_F(CompanionTest, RingSendsTheEventsOfACallInTurn) {
    struct Case {
        const wchar_t* arguments;
        std::vector<std::string> lines;
    };
    const Case cases[] = {
        {L"S 5551234567", {" /N:S /C:5551234567 /T:I /I:1001"}},
        {L"C +15551234567 /I:00042", {" /N:C /C:+15551234567 /T:I /I:00042"}},
        {L"E 5551234567 /T:O /I:77", {" /N:E /C:5551234567 /T:O /I:77"}},
        {L"call 5551234567 /T:O",
         {" /N:S /C:5551234567 /T:O /I:1001", " /N:C /C:5551234567 /T:O /I:1001",
          " /N:E /C:5551234567 /T:O /I:1001"}},
        {L"call 12 /CallerIdOnSOnly",
         {" /N:S /C:12 /T:I /I:1001", " /N:C /T:I /I:1001", " /N:E /T:I /I:1001"}},
    };
    for (const Case& entry : cases) {
        DeleteFileW(File(L"CallTriggerCmd.log").c_str());

        EXPECT_EQ(Run(L"ring.exe", L"\"" + File(L"CallTriggerCmd.exe") + L"\" " + entry.arguments),
                  0u);

        std::string log = ReadFileText(File(L"CallTriggerCmd.log")).value_or("");
        for (const std::string& line : entry.lines) {
            const size_t end = log.find('\n');
            ASSERT_NE(end, std::string::npos);
            const size_t quote = log.rfind('"', end);
            EXPECT_EQ(log.substr(quote + 1, end - quote - 1), line);
            log.erase(0, end + 1);
        }
        EXPECT_EQ(log, "");
    }
}

TEST_F(CompanionTest, RingReportsMisuseAndMissingPrograms) {
    EXPECT_EQ(Run(L"ring.exe", L""), 2u);
    EXPECT_EQ(Run(L"ring.exe", L"x.exe Q 1"), 2u);
    EXPECT_EQ(Run(L"ring.exe", L"x.exe S 1 /X"), 2u);
    EXPECT_EQ(Run(L"ring.exe", L"x.exe S 1 /Wait:soon"), 2u);
    EXPECT_EQ(Run(L"ring.exe", L"x.exe S 1 /Wait:0"), 2u);
    EXPECT_EQ(Run(L"ring.exe", L"missing.exe S 1"), 1u);
}

TEST_F(CompanionTest, RingGivesUpOnAProgramThatStaysBusyAndSendsNothingMore) {
    WriteFileText(File(L"CallTriggerCmd.delay"), "120000");
    const std::wstring arguments =
        L"\"" + File(L"CallTriggerCmd.exe") + L"\" call 5551234567 /Wait:1";
    const Process ring(File(L"ring.exe"), arguments, File(L"output.txt"));

    ASSERT_TRUE(ring.WaitForEnd());

    const Process busy = Process::ChildOf(ring.id(), L"CallTriggerCmd.exe");
    EXPECT_TRUE(busy.started());
    EXPECT_EQ(busy.exitCode(), static_cast<DWORD>(STILL_ACTIVE));
    EXPECT_EQ(ring.exitCode(), 1u);
    EXPECT_NE(Output().find("ring: the program is still busy with S after 1 seconds.\n"),
              std::string::npos)
        << Output();
    std::string log;
    EXPECT_TRUE(PumpUntil([&] {
        log = ReadFileText(File(L"CallTriggerCmd.log")).value_or("");
        return log.find(" /N:S ") != std::string::npos;
    }));
    EXPECT_EQ(log.find(" /N:C "), std::string::npos);
}

// A message box that this program shows, and how it was answered.
class ShownBox {
public:
    ShownBox(const wchar_t* text, UINT kind)
        : answer_(std::async(std::launch::async, [=] {
              return MessageBoxW(nullptr, text, L"Question of a test", kind);
          })) {}

    int answer() { return answer_.get(); }
    bool isOpen() const {
        return answer_.wait_for(std::chrono::seconds(0)) != std::future_status::ready;
    }

private:
    std::future<int> answer_;
};

TEST_F(CompanionTest, AnswerWritesTheQuestionAndPressesTheButton) {
    struct Case {
        UINT kind;
        const wchar_t* button;
        int answer;
    };
    const Case cases[] = {
        {MB_YESNO, L"Yes", IDYES},
        {MB_YESNO | MB_ICONQUESTION, L"No", IDNO},
        {MB_OK | MB_ICONEXCLAMATION, L"OK", IDOK},
        {MB_OKCANCEL, L"Cancel", IDCANCEL},
    };
    for (const Case& entry : cases) {
        ShownBox box(L"First line\n\nCaf\u00e9 & bar?", entry.kind);

        EXPECT_EQ(Run(L"answer.exe", std::wstring(L"\"Question of a test\" ") + entry.button), 0u)
            << Output();

        EXPECT_EQ(box.answer(), entry.answer) << Utf8(entry.button);
        EXPECT_EQ(Output(), "First line\n\nCaf\xC3\xA9 & bar?\n[" + Utf8(entry.button) + "]\n");
    }
}

TEST_F(CompanionTest, AnswerWithoutAButtonLeavesTheBoxOpen) {
    ShownBox box(L"Well?", MB_YESNO);

    EXPECT_EQ(Run(L"answer.exe", L"\"Question of a test\""), 0u);

    EXPECT_EQ(Output(), "Well?\n");
    EXPECT_TRUE(box.isOpen());
    EXPECT_EQ(Run(L"answer.exe", L"\"Question of a test\" Yes"), 0u);
    EXPECT_EQ(box.answer(), IDYES);
}

TEST_F(CompanionTest, AnswerTakesSeveralBoxesInTurn) {
    auto answers = std::async(std::launch::async, [] {
        const int first = MessageBoxW(nullptr, L"One?", L"Question of a test", MB_YESNO);
        const int second = MessageBoxW(nullptr, L"Two.", L"Question of a test", MB_OK);
        return std::pair(first, second);
    });

    EXPECT_EQ(Run(L"answer.exe", L"\"Question of a test\" No OK"), 0u);

    EXPECT_EQ(answers.get(), std::pair(IDNO, IDOK));
    EXPECT_EQ(Output(), "One?\n[No]\nTwo.\n[OK]\n");
}

TEST_F(CompanionTest, AnswerReportsWhatItCannotDo) {
    EXPECT_EQ(Run(L"answer.exe", L""), 2u);
    EXPECT_EQ(Run(L"answer.exe", L"\"Question of a test\" /Wait:0"), 2u);

    EXPECT_EQ(Run(L"answer.exe", L"\"Question of a test\" Yes /Wait:1"), 1u);
    EXPECT_EQ(Output(), "answer: no dialog \"Question of a test\" within 1 seconds.\n");

    ShownBox box(L"Fine.", MB_OK);
    EXPECT_EQ(Run(L"answer.exe", L"\"Question of a test\" Yes"), 1u);
    EXPECT_EQ(Output().substr(Output().find('\n') + 1),
              "answer: the dialog has no button \"Yes\".\n");
    EXPECT_EQ(Run(L"answer.exe", L"\"Question of a test\" OK"), 0u);
    EXPECT_EQ(box.answer(), IDOK);
}

}  // namespace
}  // namespace standin_tests
