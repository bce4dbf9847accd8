#include "check/calls/CallsCommand.h"

#include <gtest/gtest.h>

#include "CallLogFixture.h"
#include "check/Arguments.h"
#include "check/Output.h"
#include "fakes/FakeOutput.h"
#include "util/RuntimeError.h"

namespace corvane {
namespace {

using test::FakeOutput;

struct CallsCommandTest : testing::Test {
    CallsCommandTest() {
        std::string log;
        for (const char* number : {"1", "2", "3"}) {
            log +=
                LogOf({std::string(number) + " 0" + number + ".000 [] Corvane 1.0.0.1 started " +
                           "with param(s): /N:S /C:555000" + number + " /T:I /I:0" + number + ".",
                       std::string(number) + " 0" + number + ".500 [0" + number + "] " +
                           "Finished unloading form and closing program."});
        }
        files.files[L"C:\\the.log"] = log;
        files.files[L"D:\\other.log"] =
            LogOf({"9 01.000 [9] Found 9 in a primary contact record."});
    }

    std::wstring Run(const std::vector<std::wstring>& arguments) {
        FakeOutput output;
        EXPECT_EQ(RunCalls(arguments, output,
                           {files, L"C:\\the.log", *LogTimeFromStamp("20240311.142303.000")}),
                  ExitCode::fine);
        EXPECT_EQ(output.errors, L"");
        return output.written;
    }
    // Which of the three calls stand in rows.
    std::wstring Rows(const std::vector<std::wstring>& arguments) {
        const std::wstring written = Run(arguments);
        std::wstring rows;
        for (const wchar_t* identifier : {L"01", L"02", L"03"}) {
            if (written.find(Join(L"  ", identifier, L"    ringing")) != std::wstring::npos)
                rows += identifier;
        }
        return rows;
    }
    std::wstring WhyNot(const std::vector<std::wstring>& arguments) {
        FakeOutput output;
        try {
            static_cast<void>(RunCalls(arguments, output, {files, L"", {}}));
        } catch (const WrongUse& wrong) {
            return wrong.text;
        }
        return L"understood";
    }

    FakeLogFiles files;
};

TEST_F(CallsCommandTest, ReadsTheLogOfThisComputer) {
    EXPECT_EQ(Rows({}), L"010203");
}

TEST_F(CallsCommandTest, OptionsChooseCalls) {
    EXPECT_EQ(Rows({L"--last", L"2"}), L"0203");
    EXPECT_EQ(Rows({L"--call", L"2"}), L"02");
    EXPECT_EQ(Rows({L"--number", L"555-0003"}), L"03");
    EXPECT_EQ(Rows({L"--since", L"2024-03-12"}), L"");
    EXPECT_EQ(Rows({L"--since", L"0m"}), L"03");
    EXPECT_EQ(Rows({L"--slow", L"1"}), L"");
    EXPECT_EQ(Rows({L"--slow", L"0", L"--last=1"}), L"03");
}

TEST_F(CallsCommandTest, ReadsAnotherLog) {
    EXPECT_NE(Run({L"--log", L"D:\\other.log"}).find(L"found in a primary"), std::wstring::npos);
}

TEST_F(CallsCommandTest, WritesAPage) {
    EXPECT_EQ(Run({L"--html", L"C:\\page.html", L"--call", L"2"}), L"Wrote C:\\page.html.\n");
    const std::string& page = files.files[L"C:\\page.html"];
    EXPECT_TRUE(page.starts_with("<!DOCTYPE html>\n"));
    EXPECT_TRUE(page.ends_with("</html>\n"));
    EXPECT_NE(page.find("only call 2"), std::string::npos);
}

TEST_F(CallsCommandTest, WhatIsNotUnderstoodIsSaid) {
    EXPECT_EQ(WhyNot({L"--since", L"soon"}), L"--since takes a date or time, not \"soon\".");
    EXPECT_EQ(WhyNot({L"--number", L"Ann"}), L"--number takes digits, not \"Ann\".");
    EXPECT_EQ(WhyNot({L"--slow", L"x"}), L"--slow takes a whole number, not \"x\".");
    EXPECT_EQ(WhyNot({L"00042"}), L"Not understood: \"00042\".");
}

TEST_F(CallsCommandTest, ALogThatCannotBeReadIsAnError) {
    FakeOutput output;
    EXPECT_THROW(static_cast<void>(RunCalls({}, output, {files, L"C:\\none.log", {}})),
                 RuntimeError);
}

}  // namespace
}  // namespace corvane
