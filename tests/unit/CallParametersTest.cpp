#include "app/CallParameters.h"

#include "ProgramFixture.h"
#include "StatusLines.h"
#include "TestErrors.h"

namespace corvane::test {
namespace {

using Strings = std::vector<std::wstring>;

class CallParametersTest : public ProgramTest {
protected:
    // Parses with the options in their defaults.
    ParsedParameters Parse(const std::wstring& arguments) {
        Program& made = Make(arguments);
        made.settings.LoadSettings();
        return made.parameters.ParseCallParameters();
    }
    Form& form() { return program().form; }
};

TEST_F(CallParametersTest, AnEmptyOrBlankCommandLineHasNoParameters) {
    for (const wchar_t* arguments : {L"", L" ", L"     "}) {
        const ParsedParameters parsed = Parse(arguments);
        EXPECT_FALSE(parsed.ParamsFound);
        EXPECT_TRUE(parsed.ParseOK);
        EXPECT_EQ(StatusLines(form()), Strings{L"Corvane 1.0.0.1 started without params."});
    }
}

TEST_F(CallParametersTest, ATextWithoutASlashIsTheNumberToDialWhole) {
    struct Row {
        std::wstring arguments;
        std::wstring number;
    };
    for (const Row& row :
         {Row{L" 5551234", L"5551234"}, Row{L" (555) 123-4567 ", L"(555) 123-4567"},
          Row{L" \"555 1234\"", L"\"555 1234\""}, Row{L"CALLME", L"CALLME"}}) {
        EXPECT_TRUE(Parse(row.arguments).ParamsFound);
        EXPECT_EQ(form().txtOutboundPhone.text(), row.number);
        EXPECT_EQ(form().txtCallerID.text(), L"");
        EXPECT_EQ(StatusLines(form()),
                  Strings{L"Corvane 1.0.0.1 started with param(s): " + row.number + L"."});
    }
}

TEST_F(CallParametersTest, SwitchesFillTheirBoxes) {
    const ParsedParameters parsed = Parse(L" /N:S /C:5551234 /T:I /I:00042");
    EXPECT_TRUE(parsed.ParamsFound);
    EXPECT_TRUE(parsed.ParseOK);
    EXPECT_EQ(form().txtNotifType.text(), L"S");
    EXPECT_EQ(form().txtCallerID.text(), L"5551234");
    EXPECT_EQ(form().txtCallerIDDigits.text(), L"5551234");
    EXPECT_EQ(form().txtCallerIDFormatted.text(), L"()555-1234");
    EXPECT_EQ(form().txtCallType.text(), L"I");
    EXPECT_EQ(form().txtCallIdentifier.text(), L"00042");
    EXPECT_EQ(form().txtOutboundPhone.text(), L"");
    EXPECT_EQ(StatusLines(form()),
              Strings{L"Corvane 1.0.0.1 started with param(s): /N:S /C:5551234 /T:I /I:00042."});
}

TEST_F(CallParametersTest, TheSeparatorIsSkippedWhateverItIs) {
    for (const wchar_t* token : {L"/N:S", L"/N=S", L"/NxS"}) {
        Parse(std::wstring(token) + L" /T:O");
        EXPECT_EQ(form().txtNotifType.text(), L"S");
        EXPECT_EQ(form().txtCallType.text(), L"O");
    }
}

TEST_F(CallParametersTest, ShortTokensGiveEmptyValues) {
    Parse(L"/N:S /N /T: /I");
    EXPECT_EQ(form().txtNotifType.text(), L"");
    EXPECT_EQ(form().txtCallType.text(), L"");
    EXPECT_EQ(form().txtCallIdentifier.text(), L"");
}

TEST_F(CallParametersTest, ASwitchGivenTwiceTakesTheLaterValueAndTheOrderIsFree) {
    Parse(L"/I:7 /T:O /N:S /N:E /T:I");
    EXPECT_EQ(form().txtNotifType.text(), L"E");
    EXPECT_EQ(form().txtCallType.text(), L"I");
    EXPECT_EQ(form().txtCallIdentifier.text(), L"7");
}

TEST_F(CallParametersTest, ALoneSwitchIsANumberToDial) {
    Parse(L"/N:S");
    EXPECT_EQ(form().txtOutboundPhone.text(), L"/N:S");
    EXPECT_EQ(form().txtNotifType.text(), L"");
}

TEST_F(CallParametersTest, UnknownTokensAreReportedWithTheirPositionAndForced) {
    Make(L"/N:S /X:1 /n:S");
    program().settings.LoadSettings();
    program().status.SetUpLog();
    program().parameters.ParseCallParameters();

    EXPECT_EQ(StatusLines(form()),
              (Strings{L"Corvane 1.0.0.1 started with param(s): /N:S /X:1 /n:S.",
                       L"Unrecognized parameter #1: /X:1.", L"Unrecognized parameter #2: /n:S."}));
    const std::wstring log = around.files.files[form().txtLogPath.text()];
    EXPECT_EQ(log.find(L"started with"), std::wstring::npos) << "the log is off";
    EXPECT_NE(log.find(L"Unrecognized parameter #1: /X:1."), std::wstring::npos);
    EXPECT_NE(log.find(L"Unrecognized parameter #2: /n:S."), std::wstring::npos);
}

TEST_F(CallParametersTest, QuotesVanishAndBlanksInsideThemSplit) {
    Parse(L"/N:S /C:\"555 1234567\"");
    EXPECT_EQ(form().txtCallerID.text(), L"555");
    EXPECT_EQ(StatusLines(form()).back(), L"Unrecognized parameter #2: 1234567.");
}

TEST_F(CallParametersTest, AQuoteInsideATokenDoesNotEndIt) {
    Parse(L"/N:\"S\" /I:00\"42");
    EXPECT_EQ(form().txtNotifType.text(), L"S");
    EXPECT_EQ(form().txtCallIdentifier.text(), L"0042");
}

TEST_F(CallParametersTest, ARejectedCallerIdStopsTheRunButNotTheWalk) {
    const ParsedParameters parsed = Parse(L"/C:anonymous /T:I /I:9");
    EXPECT_FALSE(parsed.ParseOK);
    EXPECT_TRUE(parsed.ParamsFound);
    EXPECT_EQ(form().txtCallType.text(), L"I");
    EXPECT_EQ(form().txtCallIdentifier.text(), L"9");
    EXPECT_EQ(StatusLines(form()).back(), L"Ignored non-numeric CallerID: anonymous.");
}

TEST_F(CallParametersTest, ALaterCallerIdThatIsAcceptedMakesItGoodAgain) {
    EXPECT_TRUE(Parse(L"/C:x /C:5551234567").ParseOK);
    EXPECT_EQ(form().txtCallerIDFormatted.text(), L"(555)123-4567");
    EXPECT_FALSE(Parse(L"/C:5551234567 /C:x").ParseOK);
}

TEST_F(CallParametersTest, AfterARejectedCallerIdUnknownTokensAreNoLongerForced) {
    Make(L"/C:x /X:1 /C:5551234567 /Y:1");
    program().settings.LoadSettings();
    program().status.SetUpLog();
    program().parameters.ParseCallParameters();

    const std::wstring log = around.files.files[form().txtLogPath.text()];
    EXPECT_EQ(log.find(L"/X:1"), std::wstring::npos);
    EXPECT_NE(log.find(L"Unrecognized parameter #3: /Y:1."), std::wstring::npos);
}

TEST_F(CallParametersTest, LogLinesCarryTheCallIdentifierOnceItWasRead) {
    around.StoreOption(L"chkWriteLog", L"1");
    Make(L"/X:1 /I:00042 /Y:2");
    program().status.SetUpLog();
    program().settings.LoadSettings();
    program().parameters.ParseCallParameters();

    const std::wstring log = around.files.files[form().txtLogPath.text()];
    EXPECT_NE(log.find(L"\t[]:\tUnrecognized parameter #0: /X:1.\r\n"), std::wstring::npos);
    EXPECT_NE(log.find(L"\t[00042]:\tUnrecognized parameter #2: /Y:2.\r\n"), std::wstring::npos);
}

TEST_F(CallParametersTest, LeavingTheLetterBoxesMakesThemUpperCase) {
    Make();
    form().txtNotifType.setText(L"s");
    form().txtCallType.setText(L"i");
    program().parameters.LeaveParameterBox(form().txtNotifType, true);
    EXPECT_EQ(form().txtNotifType.text(), L"S");
    EXPECT_EQ(form().txtCallType.text(), L"i") << "only the box that is left";
    program().parameters.LeaveParameterBox(form().txtCallType, true);
    EXPECT_EQ(form().txtCallType.text(), L"I");
}

TEST_F(CallParametersTest, ProcessCallFollowsTheParameterBoxes) {
    Make();
    Form& boxes = form();
    struct Row {
        TextBox& box;
        const wchar_t* text;
        bool enabled;
    };
    for (const Row& row :
         {Row{boxes.txtOutboundPhone, L"5", true}, Row{boxes.txtOutboundPhone, L"  ", false},
          Row{boxes.txtCallType, L"I", true}, Row{boxes.txtCallIdentifier, L"7", true},
          Row{boxes.txtCallerID, L"5551234567", true}, Row{boxes.txtCallerID, L" ", false},
          Row{boxes.txtNotifType, L"S", false}}) {
        row.box.setText(row.text);
        boxes.cmdProcessCall.setEnabled(!row.enabled);
        program().parameters.LeaveParameterBox(row.box, false);
        EXPECT_EQ(boxes.cmdProcessCall.enabled(), row.enabled)
            << testing::PrintToString(row.box.name());
        row.box.setText(L"");
    }
}

TEST_F(CallParametersTest, LeavingAnyOtherBoxLeavesProcessCallAsItIs) {
    Make();
    form().txtOutboundPhone.setText(L"5");
    form().cmdProcessCall.setEnabled(false);
    program().parameters.LeaveParameterBox(form().txtCallerIDDigits, true);
    program().parameters.LeaveParameterBox(form().txtCallerIDFormatted, true);
    EXPECT_FALSE(form().cmdProcessCall.enabled());
}

TEST_F(CallParametersTest, ACallerIdThatCannotBeMeasuredStillDecidesAboutProcessCall) {
    Make();
    program().settings.LoadSettings();
    form().txtCallerIDMinLength.setText(L"abc");
    form().txtCallerID.setText(L"5551234567");
    form().cmdProcessCall.setEnabled(false);
    EXPECT_EQ(ErrorOf([this] {
                  program().parameters.LeaveParameterBox(form().txtCallerID, true);
              }).number,
              13);
    EXPECT_TRUE(form().cmdProcessCall.enabled());
}

// Otherwise Process Call would handle the number of before.
TEST_F(CallParametersTest, ACallerIdTypedByHandThatIsRejectedLeavesNoDigits) {
    Make();
    program().settings.LoadSettings();
    for (const wchar_t* rejected : {L"Anonymous", L"123"}) {
        form().txtCallerID.setText(L"5551234567");
        program().parameters.LeaveParameterBox(form().txtCallerID, true);
        ASSERT_EQ(form().txtCallerIDFormatted.text(), L"(555)123-4567");

        form().txtCallerID.setText(rejected);
        program().parameters.LeaveParameterBox(form().txtCallerID, true);
        EXPECT_EQ(form().txtCallerIDDigits.text(), L"");
        EXPECT_EQ(form().txtCallerIDFormatted.text(), L"");
    }
}

TEST_F(CallParametersTest, OnlyARejectedCallerIdAloneIsRejectedAgain) {
    Make();
    program().settings.LoadSettings();
    form().txtCallerID.setText(L"Anonymous");
    EXPECT_TRUE(program().parameters.CallerIDRejected());
    EXPECT_EQ(StatusLines(form()).back(), L"Ignored non-numeric CallerID: Anonymous.");
    for (TextBox* box : {static_cast<TextBox*>(&form().txtOutboundPhone),
                         static_cast<TextBox*>(&form().txtCallerIDDigits),
                         static_cast<TextBox*>(&form().txtCallerIDFormatted)}) {
        box->setText(L"5");
        EXPECT_FALSE(program().parameters.CallerIDRejected());
        box->setText(L"");
    }
    form().txtCallerID.setText(L"");
    EXPECT_FALSE(program().parameters.CallerIDRejected());
    form().txtCallerID.setText(L"5551234567");
    EXPECT_FALSE(program().parameters.CallerIDRejected()) << "it is taken now";
    EXPECT_EQ(form().txtCallerIDFormatted.text(), L"(555)123-4567");
}

TEST_F(CallParametersTest, ACallerIdTypedByHandIsNormalisedWhenItChanged) {
    Make();
    program().settings.LoadSettings();
    form().txtCallerID.setText(L"15551234567");
    program().parameters.LeaveParameterBox(form().txtCallerID, false);
    EXPECT_EQ(form().txtCallerIDFormatted.text(), L"");
    program().parameters.LeaveParameterBox(form().txtCallerID, true);
    EXPECT_EQ(form().txtCallerIDDigits.text(), L"15551234567");
    EXPECT_EQ(form().txtCallerIDFormatted.text(), L"(555)123-4567");
    form().txtCallerID.setText(L"12");
    program().parameters.LeaveParameterBox(form().txtCallerID, true);
    EXPECT_EQ(StatusLines(form()), Strings{L"Ignored short CallerID: 12."});
}

}  // namespace
}  // namespace corvane::test
