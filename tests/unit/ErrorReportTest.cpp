#include "util/ErrorReport.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

#include "fakes/FakeMessageBoxes.h"
#include "fakes/FakeStatusWriter.h"

namespace corvane::test {
namespace {

class ErrorReportTest : public testing::Test {
protected:
    FakeStatusWriter status;
    FakeMessageBoxes boxes;
    ErrorReport errors{status, boxes};
};

TEST_F(ErrorReportTest, AnErrorIsShownOnceAndForcedIntoTheLogOnOneLine) {
    const RuntimeError error{13, L"x", L"Type\r\nmismatch", L"", 0};
    EXPECT_FALSE(errors.Guard([&] { throw error; }));
    EXPECT_EQ(boxes.Take(), (std::vector<ShownBox>{{L"Run-time error '13':\r\n\r\nType\r\nmismatch",
                                                    BoxButtons::Ok, BoxIcon::Critical}}));
    EXPECT_EQ(status.lines, std::vector<std::wstring>{L"Run-time error '13':  Type mismatch"});
    EXPECT_EQ(status.modes, std::vector<LogMode>{LogMode::Forced});
}

TEST_F(ErrorReportTest, EveryKindOfLineBreakBecomesABlankInTheLog) {
    EXPECT_FALSE(errors.Guard([] { throw RuntimeError{5, L"x", L"a\nb\rc\r\nd", L"", 0}; }));
    EXPECT_EQ(status.lines, std::vector<std::wstring>{L"Run-time error '5':  a b c d"});
    EXPECT_EQ(boxes.Take().front().text, L"Run-time error '5':\r\n\r\na\nb\rc\r\nd");
}

TEST_F(ErrorReportTest, TheBoxComesEvenWhenItsLineCannotBeWritten) {
    class FullStatus final : public StatusWriter {
        void WriteStatus(std::wstring_view, LogMode) override { throw std::bad_alloc(); }
    };
    FullStatus full;
    ErrorReport report(full, boxes);
    EXPECT_FALSE(report.Guard([] { throw RuntimeError{5, L"x", L"a", L"", 0}; }));
    EXPECT_EQ(boxes.Take(), (std::vector<ShownBox>{{L"Run-time error '5':\r\n\r\na", BoxButtons::Ok,
                                                    BoxIcon::Critical}}));
}

TEST_F(ErrorReportTest, AnErrorThatTheUserWasToldOfGetsItsLineAndNoSecondBox) {
    RuntimeError error{70, L"x", L"Permission denied", L"", 0};
    error.reported = true;
    EXPECT_FALSE(errors.Guard([&] { throw error; }));
    EXPECT_EQ(status.lines, std::vector<std::wstring>{L"Run-time error '70':  Permission denied"});
}

// Has memory from the second box on.
class ShortMemoryBoxes final : public MessageBoxes {
public:
    BoxAnswer Show(std::wstring_view text, BoxButtons, BoxIcon) override {
        if (asked++ == 0)
            throw std::bad_alloc();
        shown = text;
        return BoxAnswer::Ok;
    }
    int asked = 0;
    std::wstring shown;
};

TEST_F(ErrorReportTest, WhereAnErrorCannotBeShownWantOfMemoryIs) {
    ShortMemoryBoxes guarded;
    EXPECT_FALSE(ErrorReport(status, guarded).Guard([] { throw MakeRuntimeError(5); }));
    EXPECT_EQ(guarded.shown, L"Run-time error '7':\r\n\r\nOut of memory");

    ShortMemoryBoxes last;
    try {
        throw MakeRuntimeError(5);
    } catch (...) {
        ErrorReport::ShowCurrentError(last);
    }
    EXPECT_EQ(last.shown, guarded.shown);
}

TEST_F(ErrorReportTest, WithoutAStatusThereIsTheBoxAlone) {
    try {
        throw std::bad_alloc();
    } catch (...) {
        ErrorReport::ShowCurrentError(boxes);
    }
    EXPECT_EQ(boxes.Take(), (std::vector<ShownBox>{{L"Run-time error '7':\r\n\r\nOut of memory",
                                                    BoxButtons::Ok, BoxIcon::Critical}}));
}

TEST_F(ErrorReportTest, WhatSucceedsIsNotReported) {
    EXPECT_TRUE(errors.Guard([] {}));
    EXPECT_TRUE(status.lines.empty());
}

TEST_F(ErrorReportTest, OtherExceptionsAreReportedByClassicNumbers) {
    EXPECT_FALSE(errors.Guard([] { throw std::bad_alloc(); }));
    EXPECT_EQ(status.lines.back(), L"Run-time error '7':  Out of memory");
    EXPECT_FALSE(errors.Guard([] { throw std::logic_error("x"); }));
    EXPECT_EQ(status.lines.back(), L"Run-time error '5':  Invalid procedure call or argument");
    EXPECT_EQ(boxes.Take().size(), 2u);
}

}  // namespace
}  // namespace corvane::test
