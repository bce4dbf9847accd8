#include "ui/form/FieldChecks.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

#include "OptionsFixture.h"

namespace corvane::test {
namespace {

const std::wstring lengthMessage = L"Please enter a numeric value from 1 to 20";
const std::wstring secondsMessage = L"Please provide a numeric value in seconds";
const std::wstring durationMessage = L"Please provide a numeric value between 0 and 99 seconds";
const std::wstring zeroWarning =
    L"Setting this to 0 seconds will log every GoldMine interaction. The log file will grow "
    L"quickly.";

struct FieldCase {
    std::wstring field;
    std::wstring typed;
    std::wstring afterwards;
    std::wstring refusal;  // empty: accepted
};

void PrintTo(const FieldCase& one, std::ostream* out) {
    *out << std::string(one.field.begin(), one.field.end()) << " \""
         << std::string(one.typed.begin(), one.typed.end()) << '"';
}

class FieldChecksTest : public OptionsTest, public testing::WithParamInterface<FieldCase> {
protected:
    FieldChecksTest() { LoadAsForUser(); }
    bool Leave(const std::wstring& field, const std::wstring& typed) {
        auto& box = static_cast<TextBox&>(form.control(field));
        box.setText(typed);
        return checks.MayLeave(box);
    }

    FieldChecks checks{form, boxes};
};

TEST_P(FieldChecksTest, AcceptsOrRefuses) {
    const FieldCase& one = GetParam();

    const bool accepted = Leave(one.field, one.typed);

    EXPECT_EQ(accepted, one.refusal.empty());
    EXPECT_EQ(Shown(one.field), one.afterwards);
    std::vector<ShownBox> expected;
    if (!one.refusal.empty())
        expected.push_back({one.refusal, BoxButtons::Ok, BoxIcon::None});
    EXPECT_EQ(boxes.Take(), expected);
}

std::vector<FieldCase> LengthCases() {
    std::vector<FieldCase> cases;
    for (const wchar_t* field : {L"txtOutboundMaxLength", L"txtCallerIDMinLength"}) {
        for (const wchar_t* text : {L"1", L"2", L"10", L"19", L"20", L"1e1", L"1.6", L"20.4"})
            cases.push_back({field, text, text, L""});
        cases.push_back({field, L" 5", L"5", L""});
        cases.push_back({field, L"  20  ", L"20", L""});
        for (const wchar_t* text :
             {L"0", L"21", L"-1", L"abc", L"", L"0.4", L"20.6", L"1e2", L"99999999999", L"1 2"}) {
            cases.push_back({field, text, text, lengthMessage});
        }
        cases.push_back({field, L"   ", L"", lengthMessage});
    }
    return cases;
}

std::vector<FieldCase> SecondsCases() {
    std::vector<FieldCase> cases;
    for (const wchar_t* field : {L"txtDelayAddingLinkSeconds", L"txtRecordingFileMaxAgeSeconds"}) {
        for (const wchar_t* text : {L"1", L"0", L"3", L"86400", L"1000000", L"1e1", L"2.5", L"-1",
                                    L"0.0", L"99999999999"})
            cases.push_back({field, text, text, L""});
        cases.push_back({field, L" 5 ", L"5", L""});
        for (const wchar_t* text : {L"abc", L"", L"3s", L"1 2"})
            cases.push_back({field, text, text, secondsMessage});
        cases.push_back({field, L"   ", L"", secondsMessage});
    }
    return cases;
}

INSTANTIATE_TEST_SUITE_P(Lengths, FieldChecksTest, testing::ValuesIn(LengthCases()));
INSTANTIATE_TEST_SUITE_P(Seconds, FieldChecksTest, testing::ValuesIn(SecondsCases()));
INSTANTIATE_TEST_SUITE_P(
    Duration, FieldChecksTest,
    testing::Values(FieldCase{L"txtCOMDurationSeconds", L"1", L"1", L""},
                    FieldCase{L"txtCOMDurationSeconds", L" 99 ", L"99", L""},
                    FieldCase{L"txtCOMDurationSeconds", L"1e1", L"1e1", L""},
                    FieldCase{L"txtCOMDurationSeconds", L"100", L"100", durationMessage},
                    FieldCase{L"txtCOMDurationSeconds", L"-1", L"-1", durationMessage},
                    FieldCase{L"txtCOMDurationSeconds", L"99.6", L"99.6", durationMessage},
                    FieldCase{L"txtCOMDurationSeconds", L"abc", L"abc", durationMessage},
                    FieldCase{L"txtCOMDurationSeconds", L"", L"", durationMessage},
                    FieldCase{L"txtCOMDurationSeconds", L"99999999999", L"99999999999",
                              durationMessage}));
INSTANTIATE_TEST_SUITE_P(FieldsWithoutACheckStayAsTheyAre, FieldChecksTest,
                         testing::Values(FieldCase{L"txtCallerIDFormat", L" abc ", L" abc ", L""},
                                         FieldCase{L"txtCallerID", L" x ", L" x ", L""}));

TEST_F(FieldChecksTest, ZeroSecondsBetweenCommandsAreAcceptedWithAWarning) {
    for (const wchar_t* text : {L"0", L" 0 ", L"0.4"}) {
        EXPECT_TRUE(Leave(L"txtCOMDurationSeconds", text));
        EXPECT_EQ(boxes.Take(),
                  (std::vector<ShownBox>{{zeroWarning, BoxButtons::Ok, BoxIcon::Exclamation}}));
    }
}

TEST_F(FieldChecksTest, ExactlyZeroSecondsOfDelayUncheckTheirBoxOnly) {
    EXPECT_TRUE(Leave(L"txtDelayAddingLinkSeconds", L" 0 "));

    EXPECT_FALSE(form.chkDelayAddingLink.checked());
    EXPECT_TRUE(form.chkConfirmRecentRecordingFile.checked());
}

TEST_F(FieldChecksTest, ExactlyZeroSecondsOfAgeUncheckTheirBoxOnly) {
    EXPECT_TRUE(Leave(L"txtRecordingFileMaxAgeSeconds", L"0"));

    EXPECT_FALSE(form.chkConfirmRecentRecordingFile.checked());
    EXPECT_TRUE(form.chkDelayAddingLink.checked());
}

TEST_F(FieldChecksTest, OtherZerosLeaveTheBoxesChecked) {
    for (const wchar_t* text : {L"00", L"0.0", L"-0"}) {
        EXPECT_TRUE(Leave(L"txtDelayAddingLinkSeconds", text));
        EXPECT_TRUE(Leave(L"txtRecordingFileMaxAgeSeconds", text));
    }

    EXPECT_TRUE(form.chkDelayAddingLink.checked());
    EXPECT_TRUE(form.chkConfirmRecentRecordingFile.checked());
}

}  // namespace
}  // namespace corvane::test
