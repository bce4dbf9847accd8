#include "calls/CallerID.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

#include "fakes/FakeStatusWriter.h"
#include "TestErrors.h"
#include "ui/form/Form.h"

namespace corvane::test {
namespace {

class CallerIDTest : public testing::Test {
protected:
    CallerIDTest() {
        form.chkCallerIDRemoveSpaces.setChecked(true);
        form.chkIgnoreShortCallerID.setChecked(true);
        form.txtCallerIDMinLength.setText(L"6");
        form.chkCallerIDIgnoreLeading1.setChecked(true);
        form.chkFormatCallerID.setChecked(true);
        form.txtCallerIDFormat.setText(L"(###)###-####");
    }
    bool Normalize(const std::wstring& callerID) {
        form.txtCallerID.setText(callerID);
        return NormalizeCallerID(form, status);
    }
    void ExpectAccepted(const std::wstring& callerID, const std::wstring& digits,
                        const std::wstring& formatted) {
        EXPECT_TRUE(Normalize(callerID)) << callerID;
        EXPECT_EQ(form.txtCallerIDDigits.text(), digits) << callerID;
        EXPECT_EQ(form.txtCallerIDFormatted.text(), formatted) << callerID;
        EXPECT_TRUE(status.lines.empty()) << callerID;
    }

    Form form;
    FakeStatusWriter status;
};

TEST_F(CallerIDTest, ANumberIsReducedAndFormatted) {
    ExpectAccepted(L"555-123-4567", L"5551234567", L"(555)123-4567");
    ExpectAccepted(L"5551234", L"5551234", L"()555-1234");
}

TEST_F(CallerIDTest, WhatIsNoNumberIsRejectedAsReceived) {
    form.txtCallerIDFormatted.setText(L"before");
    for (const std::wstring callerID : {L"Anonymous", L"", L"  ", L"+-()"}) {
        status.lines.clear();
        form.txtCallerIDDigits.setText(L"before");

        EXPECT_FALSE(Normalize(callerID));

        EXPECT_EQ(form.txtCallerIDDigits.text(), L"");
        EXPECT_EQ(form.txtCallerIDFormatted.text(), L"before");
        EXPECT_EQ(status.lines,
                  (std::vector<std::wstring>{L"Ignored non-numeric CallerID: " + callerID + L"."}));
    }
    EXPECT_EQ(status.modes.back(), LogMode::AsConfigured);
}

TEST_F(CallerIDTest, ShortNumbersAreRejectedAndExactlyLongOnesAccepted) {
    form.txtCallerIDMinLength.setText(L"7");
    form.txtCallerIDFormatted.setText(L"before");

    EXPECT_FALSE(Normalize(L"1-2-3"));
    EXPECT_EQ(status.lines, (std::vector<std::wstring>{L"Ignored short CallerID: 123."}));
    EXPECT_EQ(status.modes.back(), LogMode::AsConfigured);
    EXPECT_EQ(form.txtCallerIDDigits.text(), L"123");
    EXPECT_EQ(form.txtCallerIDFormatted.text(), L"before");
    EXPECT_FALSE(Normalize(L"555123"));

    status.lines.clear();
    ExpectAccepted(L"5551234", L"5551234", L"()555-1234");
}

TEST_F(CallerIDTest, ShortNumbersPassWithoutTheCheck) {
    form.chkIgnoreShortCallerID.setChecked(false);
    form.txtCallerIDMinLength.setText(L"no number");

    ExpectAccepted(L"12", L"12", L"()-12");
}

TEST_F(CallerIDTest, KeptBlanksCountTowardsTheLength) {
    form.chkCallerIDRemoveSpaces.setChecked(false);
    form.txtCallerIDMinLength.setText(L"7");

    ExpectAccepted(L"12 34 5", L"12 34 5", L"12 34 5");
    EXPECT_FALSE(Normalize(L"12 345"));
    EXPECT_EQ(status.lines, (std::vector<std::wstring>{L"Ignored short CallerID: 12 345."}));
}

TEST_F(CallerIDTest, BlanksAloneAreNotEmptyWhenTheyAreKept) {
    form.chkCallerIDRemoveSpaces.setChecked(false);
    form.chkIgnoreShortCallerID.setChecked(false);

    ExpectAccepted(L"a b", L" ", L" ");
}

TEST_F(CallerIDTest, ANumberWithKeptBlanksIsNotFormatted) {
    form.chkCallerIDRemoveSpaces.setChecked(false);

    ExpectAccepted(L"555 123 4567", L"555 123 4567", L"555 123 4567");
}

TEST_F(CallerIDTest, ALeadingOneOfElevenDigitsIsDropped) {
    ExpectAccepted(L"15551234567", L"15551234567", L"(555)123-4567");
    form.chkFormatCallerID.setChecked(false);
    ExpectAccepted(L"15551234567", L"15551234567", L"5551234567");
}

TEST_F(CallerIDTest, ALeadingOneOfAnotherLengthStays) {
    form.chkFormatCallerID.setChecked(false);

    ExpectAccepted(L"1555123456", L"1555123456", L"1555123456");
    ExpectAccepted(L"155512345678", L"155512345678", L"155512345678");
    ExpectAccepted(L"25551234567", L"25551234567", L"25551234567");
}

TEST_F(CallerIDTest, ALeadingOneStaysWithoutTheOption) {
    form.chkCallerIDIgnoreLeading1.setChecked(false);

    ExpectAccepted(L"15551234567", L"15551234567", L"(1555)123-4567");
}

TEST_F(CallerIDTest, TheLeadingOneIsLookedForAmongKeptBlanksToo) {
    form.chkCallerIDRemoveSpaces.setChecked(false);

    ExpectAccepted(L"1 555 12345", L"1 555 12345", L" 555 12345");
}

TEST_F(CallerIDTest, AnInternationalNumberKeepsItsDigits) {
    form.chkFormatCallerID.setChecked(false);

    ExpectAccepted(L"+44 20 7946 0000", L"442079460000", L"442079460000");
}

TEST_F(CallerIDTest, WithoutFormattingTheDigitsAreSearched) {
    form.chkFormatCallerID.setChecked(false);

    ExpectAccepted(L"(055) 512-3456", L"0555123456", L"0555123456");
}

TEST_F(CallerIDTest, AnEmptyFormatLeavesTheDigitsAsTheyAre) {
    form.txtCallerIDFormat.setText(L"");

    ExpectAccepted(L"555-123-4567", L"5551234567", L"5551234567");
    ExpectAccepted(L"(055) 512-3456", L"0555123456", L"0555123456");
}

TEST_F(CallerIDTest, OnlyAnUncheckedBoxKeepsBlanks) {
    form.chkCallerIDRemoveSpaces.setValue(2);

    ExpectAccepted(L"555 123 4567", L"5551234567", L"(555)123-4567");
}

TEST_F(CallerIDTest, AMinimumThatIsNoNumberMismatches) {
    form.txtCallerIDMinLength.setText(L"six");

    EXPECT_EQ(ErrorOf([this] { Normalize(L"5551234"); }).number, 13);
}

}  // namespace
}  // namespace corvane::test
