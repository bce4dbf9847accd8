// A whole command line of any text: the program finds its own part of it, and fills either the
// number to dial or the boxes of an event.
//
// The input is the command line.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "app/CallParameters.h"
#include "app/Status.h"
#include "fakes/FakeClock.h"
#include "fakes/FakeCrashLine.h"
#include "fakes/FakeFiles.h"
#include "fakes/FakeRegistry.h"
#include "fuzz/Input.h"
#include "ui/form/Form.h"
#include "util/Digits.h"
#include "util/ProgramInfo.h"
#include "util/Text.h"

namespace {

using namespace corvane;
using namespace corvane::test;

constexpr auto npos = std::wstring::npos;

std::wstring_view Arguments(const std::wstring& whole) {
    const std::wstring own = L"C:\\Program Files\\Corvane\\CorvaneTo3CX.exe";
    const std::wstring_view arguments = ArgumentsOf(whole, own);
    EXPECT_TRUE(std::wstring_view(whole).ends_with(arguments));
    for (const std::wstring& path : {own, L"\"" + own + L"\""}) {
        const std::wstring ran = path + L" " + whole;
        EXPECT_EQ(ArgumentsOf(ran, own), L" " + whole);
    }
    return arguments;
}

void ExpectEventBoxes(const Form& form, const std::wstring& arguments, bool accepted) {
    const std::wstring unquoted = ReplaceAll(arguments, L"\"", L"");
    for (const TextBox* box : {static_cast<const TextBox*>(&form.txtNotifType),
                               static_cast<const TextBox*>(&form.txtCallerID),
                               static_cast<const TextBox*>(&form.txtCallType),
                               static_cast<const TextBox*>(&form.txtCallIdentifier)}) {
        EXPECT_EQ(box->text().find_first_of(L"\" "), npos) << testing::PrintToString(box->text());
        EXPECT_NE(unquoted.find(box->text()), npos);
    }
    const std::wstring& digits = form.txtCallerIDDigits.text();
    EXPECT_EQ(digits, ExtractDigits(form.txtCallerID.text(), false, false));
    EXPECT_TRUE(accepted ? form.txtCallerID.text().empty() || !digits.empty() : digits.empty());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::wstring whole = Input(data, size).Rest();
    whole.erase(std::min(whole.find(L'\0'), whole.size()));  // where a command line ends
    const std::wstring arguments(Arguments(whole));

    Form form;
    const ProgramInfo info{L"C:\\Program Files\\Corvane", L"CorvaneTo3CX", 1, 0, 1};
    FakeRegistry registry;
    FakeFileSystem files;
    const FakeShell shell;
    FakeClock clock;
    FakeCrashLine crashLine;
    Status status(form, info, registry, files, shell, clock, crashLine);
    form.chkWriteLog.setChecked(true);
    form.txtLogPath.setText(L"log");
    CallParameters parameters(form, status, info.VersionText(), arguments);

    const ParsedParameters parsed = parameters.ParseCallParameters();

    const std::wstring_view typed = TrimBlanks(arguments);
    EXPECT_EQ(parsed.ParamsFound, !typed.empty());
    EXPECT_TRUE(parsed.ParamsFound || parsed.ParseOK);
    const std::wstring& number = form.txtOutboundPhone.text();
    if (typed.find(L'/') == npos) {
        EXPECT_EQ(number, typed);
    }
    if (number.empty()) {
        ExpectEventBoxes(form, arguments, parsed.ParseOK);
    } else {
        EXPECT_EQ(Join(form.txtNotifType.text(), form.txtCallerID.text(), form.txtCallType.text(),
                       form.txtCallIdentifier.text(), form.txtCallerIDDigits.text()),
                  L"");
    }
    return 0;
}
