#include "dialing/Dialer.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fakes/FakeMessageBoxes.h"
#include "fakes/FakeProcesses.h"
#include "fakes/FakeStatusWriter.h"
#include "TestErrors.h"
#include "ui/form/Form.h"

namespace corvane::test {
namespace {

using Lines = std::vector<std::wstring>;

class DialerTest : public testing::Test {
protected:
    DialerTest() {
        form.txt3CXOutboundCallNotifierPath.setText(L"C:\\Program Files\\3CX\\CallTriggerCmd.exe");
    }
    bool Dial(const std::wstring& number) {
        form.txtOutboundPhone.setText(number);
        return dialer.Dial();
    }

    FakeProcesses processes;
    FakeStatusWriter status;
    FakeMessageBoxes boxes;
    Form form;
    Dialer dialer{form, processes, status, boxes};
};

struct DialRequest {
    std::wstring received;
    std::wstring maxLength;  // empty: no trimming
    std::wstring dialed;
};

class DialRequestTest : public DialerTest, public testing::WithParamInterface<DialRequest> {};

TEST_P(DialRequestTest, TheCleanedNumberIsHandedTo3CX) {
    form.chkTrimOutboundPrefix.setChecked(!GetParam().maxLength.empty());
    form.txtOutboundMaxLength.setText(GetParam().maxLength);

    EXPECT_TRUE(Dial(GetParam().received));

    EXPECT_EQ(form.txtOutboundPhoneAsDialed.text(), GetParam().dialed);
    EXPECT_EQ(processes.startedPrograms, Lines{L"C:\\Program Files\\3CX\\CallTriggerCmd.exe"});
    EXPECT_EQ(processes.started,
              Lines{L"\"C:\\Program Files\\3CX\\CallTriggerCmd.exe\" -cmd makecall:" +
                    GetParam().dialed});
    EXPECT_EQ(status.lines, Lines{L"Dialed " + GetParam().dialed + L" using 3CX."});
}

INSTANTIATE_TEST_SUITE_P(
    Numbers, DialRequestTest,
    testing::Values(DialRequest{L"(555) 123-4567", L"", L"5551234567"},
                    DialRequest{L"+1 555 123 4567", L"", L"15551234567"},
                    DialRequest{L"*67 555 1234", L"", L"*675551234"},
                    DialRequest{L"555.1234#9", L"", L"5551234#9"}, DialRequest{L"7", L"", L"7"},
                    DialRequest{L"*", L"", L"*"}, DialRequest{L"#", L"10", L"#"},
                    DialRequest{L"%COMSPEC%5%1%n%%2", L"", L"512"},
                    DialRequest{L"5\r\n5\t5|5>5^5&5;5", L"", L"55555555"},
                    DialRequest{L"5\x0665\xFF15\x00B2", L"", L"5"},
                    DialRequest{std::wstring(L"5\0"
                                             L"5",
                                             3),
                                L"", L"55"},
                    DialRequest{std::wstring(300, L'1'), L"", std::wstring(300, L'1')},
                    DialRequest{std::wstring(290, L'1') + L"2345678901", L"10", L"2345678901"},
                    DialRequest{std::wstring(300, L'1'), L"300", std::wstring(300, L'1')},
                    DialRequest{L"555\"&calc", L"", L"555"},
                    DialRequest{L"5551234 -cmd x:1", L"", L"55512341"},
                    DialRequest{L"915551234567", L"10", L"5551234567"},
                    DialRequest{L"5551234", L"10", L"5551234"},
                    DialRequest{L"5551234567", L"10", L"5551234567"},
                    DialRequest{L"*67 555 1234", L"8", L"75551234"},
                    DialRequest{L"12345", L"1", L"5"}));

struct NoDigits {
    std::wstring received;
    std::wstring maxLength;
};

class NoDigitsTest : public DialerTest, public testing::WithParamInterface<NoDigits> {};

TEST_P(NoDigitsTest, NothingIsStarted) {
    form.chkTrimOutboundPrefix.setChecked(!GetParam().maxLength.empty());
    form.txtOutboundMaxLength.setText(GetParam().maxLength);

    EXPECT_FALSE(Dial(GetParam().received));

    EXPECT_TRUE(processes.started.empty());
    EXPECT_EQ(form.txtOutboundPhoneAsDialed.text(), L"");
    EXPECT_EQ(boxes.Take(),
              ShownBoxes{Notice(L"Number to dial \"" + GetParam().received +
                                L"\" contains no digits. For USA Format numbers, GoldMine requires "
                                L"at least 7 digits for outbound dialing.\r\n")});
    EXPECT_EQ(status.lines, Lines{L"Number to dial \"" + GetParam().received +
                                  L"\" contains no digits. Call processing terminated."});
}

INSTANTIATE_TEST_SUITE_P(Numbers, NoDigitsTest,
                         testing::Values(NoDigits{L"CALLME", L""}, NoDigits{L"+-() .", L""},
                                         NoDigits{L"5551234", L"0"}));

TEST_F(DialerTest, AStartThatFailsIsTold) {
    processes.startSucceeds = false;

    EXPECT_FALSE(Dial(L"555-1234"));

    EXPECT_EQ(boxes.Take(),
              ShownBoxes{Notice(L"Call to number 5551234 failed.\r\nCommand: \"C:\\Program "
                                L"Files\\3CX\\CallTriggerCmd.exe\" -cmd makecall:5551234")});
    EXPECT_EQ(status.lines, Lines{L"Call to number 5551234 failed. Command:  \"C:\\Program "
                                  L"Files\\3CX\\CallTriggerCmd.exe\" -cmd makecall:5551234"});
}

TEST_F(DialerTest, AnUnknownCallTriggerIsQuotedLikeAnyOther) {
    form.txt3CXOutboundCallNotifierPath.setText(L"");
    processes.startSucceeds = false;

    EXPECT_FALSE(Dial(L"5"));

    EXPECT_EQ(processes.started, Lines{L"\"\" -cmd makecall:5"});
    EXPECT_EQ(boxes.Take(), ShownBoxes{Notice(L"Call to number 5 failed.\r\nCommand: \"\" -cmd "
                                              L"makecall:5")});
}

TEST_F(DialerTest, AMaximumLengthThatIsNoNumberIsATypeMismatch) {
    form.chkTrimOutboundPrefix.setChecked(true);
    form.txtOutboundMaxLength.setText(L"ten");
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(Dial(L"5551234")); }).number, 13);
    EXPECT_TRUE(processes.started.empty());
}

TEST_F(DialerTest, ANegativeMaximumLengthIsAnInvalidArgument) {
    form.chkTrimOutboundPrefix.setChecked(true);
    form.txtOutboundMaxLength.setText(L"-1");
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(Dial(L"5551234")); }).number, 5);
    EXPECT_TRUE(processes.started.empty());
}

}  // namespace
}  // namespace corvane::test
