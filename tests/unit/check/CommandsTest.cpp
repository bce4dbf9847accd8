#include "check/Commands.h"

#include <gtest/gtest.h>

#include <vector>

#include "check/Arguments.h"
#include "fakes/FakeOutput.h"
#include "util/RuntimeError.h"

namespace corvane {
namespace {

struct CommandsTest : testing::Test {
    int Run(const std::vector<std::wstring>& arguments) {
        const std::vector<CheckCommand> commands = {
            {L"look", L"looks at it", L"CorvaneCheck look <it>\n",
             [this](std::span<const std::wstring> rest, Output&) {
                 given.assign(rest.begin(), rest.end());
                 return ExitCode::warnings;
             }},
            {L"refuse", L"", L"",
             [](std::span<const std::wstring>, Output&) -> int { throw WrongUse{L"Not so."}; }},
            {L"fail", L"", L"",
             [](std::span<const std::wstring>, Output&) -> int {
                 throw MakeRuntimeError(ErrorNumber::TypeMismatch);
             }},
        };
        return RunCommand(commands, arguments, output);
    }

    test::FakeOutput output;
    std::vector<std::wstring> given;
};

TEST_F(CommandsTest, TheCommandGetsWhatStandsBehindItsName) {
    EXPECT_EQ(Run({L"look", L"a", L"b"}), ExitCode::warnings);
    EXPECT_EQ(given, (std::vector<std::wstring>{L"a", L"b"}));
}

TEST_F(CommandsTest, WithoutACommandTheyAreListed) {
    EXPECT_EQ(Run({}), ExitCode::wrongUse);
    EXPECT_NE(output.written.find(L"look    looks at it\n"), std::wstring::npos) << "not listed";
    const std::wstring list = output.written;
    EXPECT_EQ(Run({L"--help"}), ExitCode::fine);
    EXPECT_EQ(output.written, list + list);
}

TEST_F(CommandsTest, HelpIsWrittenInsteadOfRunning) {
    for (const wchar_t* help : {L"--help", L"/?"}) {
        output.written.clear();
        EXPECT_EQ(Run({L"look", L"a", help}), ExitCode::fine);
        EXPECT_EQ(output.written, L"CorvaneCheck look <it>\n");
    }
    EXPECT_TRUE(given.empty());
}

TEST_F(CommandsTest, WhatIsNotUnderstoodGoesBesideTheResult) {
    EXPECT_EQ(Run({L"lok"}), ExitCode::wrongUse);
    EXPECT_EQ(Run({L"refuse"}), ExitCode::wrongUse);
    EXPECT_EQ(output.written, L"");
    EXPECT_EQ(output.errors,
              L"There is no command \"lok\". CorvaneCheck --help says what there is.\n"
              L"Not so. CorvaneCheck refuse --help says what there is.\n");
}

TEST_F(CommandsTest, AnErrorIsTold) {
    EXPECT_EQ(Run({L"fail"}), ExitCode::wrongUse);
    EXPECT_EQ(output.errors, L"Run-time error '13':\n\nType mismatch\n");
}

}  // namespace
}  // namespace corvane
