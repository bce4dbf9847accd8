#include "settings/OptionText.h"

#include <gtest/gtest.h>

#include "TestErrors.h"
#include "ui/form/Form.h"

namespace corvane::test {
namespace {

class OptionTextTest : public testing::Test {
protected:
    Form form;
};

TEST_F(OptionTextTest, ACheckBoxIsWrittenAsItsState) {
    for (const int state : {1, 0, 2}) {
        form.chkFillInRef.setValue(state);
        EXPECT_EQ(OptionText(form.chkFillInRef), std::to_wstring(state));
    }
}

TEST_F(OptionTextTest, AnOptionButtonIsWrittenAsAWord) {
    EXPECT_EQ(OptionText(form.optPhone123), L"False");
    form.optPhone123.setSelected(true);
    EXPECT_EQ(OptionText(form.optPhone123), L"True");
}

TEST_F(OptionTextTest, ATextIsWrittenAsItStands) {
    form.txtCallerIDFormat.setText(L"  ## ## ");

    EXPECT_EQ(OptionText(form.txtCallerIDFormat), L"  ## ## ");
}

TEST_F(OptionTextTest, AStoredTextIsTrimmed) {
    SetOptionFromText(form.chkFillInRef, L" 1 ");
    SetOptionFromText(form.optPhone123, L" True ");
    SetOptionFromText(form.txtCallerIDFormat, L"  a b  ");

    EXPECT_TRUE(form.chkFillInRef.checked());
    EXPECT_TRUE(form.optPhone123.selected());
    EXPECT_EQ(form.txtCallerIDFormat.text(), L"a b");
}

TEST_F(OptionTextTest, ACheckBoxTakesStatesOnly) {
    for (const wchar_t* text : {L"yes", L"", L" ", L"True"})
        EXPECT_EQ(ErrorOf([&] { SetOptionFromText(form.chkFillInRef, text); }).number, 13);
    for (const wchar_t* text : {L"3", L"-1"})
        EXPECT_EQ(ErrorOf([&] { SetOptionFromText(form.chkFillInRef, text); }).number, 380);
    EXPECT_EQ(ErrorOf([&] { SetOptionFromText(form.chkFillInRef, L"40000"); }).number, 6);
    EXPECT_FALSE(form.chkFillInRef.checked());

    SetOptionFromText(form.chkFillInRef, L"2");
    EXPECT_EQ(form.chkFillInRef.value(), 2);
}

TEST_F(OptionTextTest, AnOptionButtonTakesWordsInAnyCaseAndNumbers) {
    for (const wchar_t* text : {L"True", L"true", L"TRUE", L"-1", L"1"}) {
        form.optPhone123.setSelected(false);
        SetOptionFromText(form.optPhone123, text);
        EXPECT_TRUE(form.optPhone123.selected()) << std::wstring(text);
    }
    for (const wchar_t* text : {L"False", L"false", L"0"}) {
        form.optPhone123.setSelected(true);
        SetOptionFromText(form.optPhone123, text);
        EXPECT_FALSE(form.optPhone123.selected()) << std::wstring(text);
    }
    for (const wchar_t* text : {L"yes", L""})
        EXPECT_EQ(ErrorOf([&] { SetOptionFromText(form.optPhone123, text); }).number, 13);
}

}  // namespace
}  // namespace corvane::test
