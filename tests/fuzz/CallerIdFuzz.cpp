// A caller ID, or a number to dial, of any text under any options: only digits come of it, and
// "#" and "*" where a number is dialled.
//
// Lines: letters of the options that are on, least length, format, greatest length to dial; then
// the caller ID.

#include <gtest/gtest.h>

#include <string>

#include "calls/CallerID.h"
#include "dialing/Dialer.h"
#include "fakes/FakeMessageBoxes.h"
#include "fakes/FakeProcesses.h"
#include "fakes/FakeStatusWriter.h"
#include "fuzz/Input.h"
#include "ui/form/Form.h"
#include "util/Digits.h"
#include "util/RuntimeError.h"

namespace {

using namespace corvane;
using namespace corvane::test;

constexpr const wchar_t* digits = L"0123456789";
constexpr const wchar_t* dialled = L"0123456789#*";

bool ConsistsOf(const std::wstring& text, const wchar_t* characters) {
    return text.find_first_not_of(characters) == std::wstring::npos;
}

// A box for a number may hold any text that was stored; what does not convert names the box.
void ExpectErrorOf(const TextBox& box, const RuntimeError& error) {
    EXPECT_TRUE(error.number == ErrorNumber::TypeMismatch ||
                error.number == ErrorNumber::Overflow ||
                error.number == ErrorNumber::InvalidProcedureCall)
        << error.number;
    EXPECT_TRUE(error.number == ErrorNumber::InvalidProcedureCall ||
                error.description.starts_with(box.name() + L": "))
        << testing::PrintToString(error.description);
}

void Normalize(Form& form) {
    const std::wstring& text = form.txtCallerID.text();
    FakeStatusWriter status;
    bool accepted = false;
    try {
        accepted = NormalizeCallerID(form, status);
    } catch (const RuntimeError& error) {
        ExpectErrorOf(form.txtCallerIDMinLength, error);
    }
    const std::wstring& kept = form.txtCallerIDDigits.text();
    const bool keepsBlanks = form.chkCallerIDRemoveSpaces.value() == CheckBox::unchecked;
    EXPECT_TRUE(ConsistsOf(kept, keepsBlanks ? L"0123456789 " : digits));
    EXPECT_EQ(ExtractDigits(kept, false, false), ExtractDigits(text, false, false));
    EXPECT_EQ(ExtractDigits(kept, true, keepsBlanks), kept);
    EXPECT_TRUE(!accepted || !kept.empty());

    const std::wstring& formatted = form.txtCallerIDFormatted.text();
    if (!accepted) {
        EXPECT_EQ(formatted, L"");
        return;
    }
    EXPECT_TRUE(status.lines.empty());
    if (!form.chkFormatCallerID.checked()) {
        EXPECT_TRUE(kept.ends_with(formatted));
        EXPECT_LE(kept.size() - formatted.size(), 1U);
    } else if (ExtractDigits(form.txtCallerIDFormat.text(), false, false).empty()) {
        // Only leading zeros and the country code may be missing.
        EXPECT_TRUE(
            ExtractDigits(kept, false, false).ends_with(ExtractDigits(formatted, false, false)));
    }
}

void Dial(Form& form) {
    const std::wstring path = L"C:\\3CX\\CallTriggerCmd.exe";
    form.txt3CXOutboundCallNotifierPath.setText(path);
    FakeProcesses processes;
    FakeStatusWriter status;
    FakeMessageBoxes boxes;
    Dialer dialer(form, processes, status, boxes);
    bool dialledIt = false;
    try {
        dialledIt = dialer.Dial();
    } catch (const RuntimeError& error) {
        ExpectErrorOf(form.txtOutboundMaxLength, error);
        EXPECT_TRUE(form.chkTrimOutboundPrefix.checked());
        EXPECT_TRUE(processes.started.empty());
        return;
    }
    EXPECT_EQ(processes.started.size(), dialledIt ? 1U : 0U);
    EXPECT_EQ(boxes.Take().empty(), dialledIt);
    EXPECT_EQ(status.lines.size(), 1U);
    for (const std::wstring& command : processes.started) {
        const std::wstring fixed = L"\"" + path + L"\" -cmd makecall:";
        EXPECT_TRUE(command.starts_with(fixed));
        const std::wstring number = command.substr(fixed.size());
        EXPECT_FALSE(number.empty());
        EXPECT_TRUE(ConsistsOf(number, dialled)) << testing::PrintToString(number);
        EXPECT_EQ(form.txtOutboundPhoneAsDialed.text(), number);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    Form form;
    const std::wstring on = input.Line();
    const auto set = [&on](CheckBox& option, wchar_t letter) {
        option.setChecked(on.find(letter) != std::wstring::npos);
    };
    set(form.chkCallerIDRemoveSpaces, L'r');
    set(form.chkIgnoreShortCallerID, L's');
    set(form.chkCallerIDIgnoreLeading1, L'1');
    set(form.chkFormatCallerID, L'f');
    set(form.chkTrimOutboundPrefix, L't');
    form.txtCallerIDMinLength.setText(input.Line());
    form.txtCallerIDFormat.setText(input.Line());
    form.txtOutboundMaxLength.setText(input.Line());
    const std::wstring text = input.Rest();
    form.txtCallerID.setText(text);
    form.txtOutboundPhone.setText(text);
    Normalize(form);
    Dial(form);
    return 0;
}
