// A number that GoldMine passes on to be dialed.

#include <cwctype>
#include <string>

#include "app/CallParameters.h"
#include "app/Status.h"
#include "check/number/NumberParts.h"
#include "check/ReadOnly.h"
#include "check/Talk.h"
#include "dialing/Dialer.h"
#include "environment/ThreeCXIntegration.h"
#include "ui/form/Form.h"
#include "util/Digits.h"
#include "util/Text.h"

namespace corvane {

namespace {

std::wstring DigitsIn(std::wstring_view text) {
    return ExtractDigits(text, false, false);
}

// The digits behind a letter, comma or semicolon that stands behind a number; empty when there are
// none.
std::wstring ExtensionIn(std::wstring_view text) {
    constexpr std::size_t shortestNumber = 5;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const wchar_t mark = text[i];
        if ((std::iswalpha(static_cast<std::wint_t>(mark)) || mark == L',' || mark == L';') &&
            DigitsIn(text.substr(0, i)).size() >= shortestNumber) {
            return DigitsIn(text.substr(i));
        }
    }
    return {};
}

bool BeginsWithCountryCode(std::wstring_view text) {
    const std::wstring_view trimmed = TrimBlanks(text);
    return trimmed.starts_with(L"+") || trimmed.starts_with(L"(+") || trimmed.starts_with(L"00") ||
           trimmed.starts_with(L"011");
}

void WarnOfLosses(const std::wstring& text, const Form& form, NumberPart& part) {
    const std::wstring digits = ExtractDigits(text, true, false);
    const std::wstring& dialed = form.txtOutboundPhoneAsDialed.text();
    const std::wstring extension = ExtensionIn(text);
    if (!extension.empty()) {
        part.Warn(
            Join(extension, L" looks like an extension: it is dialed as the end of the number"));
    }
    if (digits.size() <= dialed.size())
        return;
    const std::wstring lost = digits.substr(0, digits.size() - dialed.size());
    part.Warn(Join(lost, L" is cut off at the front, because only the last ",
                   form.txtOutboundMaxLength.text(), L" digits are dialed",
                   BeginsWithCountryCode(text) ? L"; it looks like a country code" : L""));
}

}  // namespace

NumberPart AsNumberToDial(const std::wstring& text, const CheckSurroundings& around) {
    NumberPart part;
    Form form;
    LoadSettings(form, around, part);
    part.warnings.clear();  // told before
    Talk talk;
    ReadOnlyFiles files(around.files);
    ReadOnlyProcesses processes(around.processes);
    ThreeCXIntegration threeCX(form, around.program, around.registry, files, around.shell, talk,
                               talk);
    threeCX.Discover();
    NoCrashLine noCrashLine;
    Status status(form, around.program, around.registry, files, around.shell, around.clock,
                  noCrashLine);
    CallParameters parameters(form, status, around.program.VersionText(), text);
    static_cast<void>(parameters.ParseCallParameters());

    part.rows.emplace_back(L"command line", Join(L"CorvaneTo3CX.exe ", text));
    const std::wstring& number = form.txtOutboundPhone.text();
    if (number.empty()) {
        part.Warn(
            TrimBlanks(text).empty()
                ? std::wstring(L"nothing to dial: the program would show its window")
                : std::wstring(L"the \"/\" makes the program split this at its blanks and take "
                               L"it for 3CX's switches: nothing is dialed"));
        return part;
    }
    part.rows.emplace_back(L"digits", ExtractDigits(number, true, false));
    Dialer dialer(form, processes, talk, talk);
    if (!dialer.Dial()) {
        part.Warn(talk.last());
        return part;
    }
    part.rows.emplace_back(L"dialed", form.txtOutboundPhoneAsDialed.text());
    WarnOfLosses(number, form, part);
    if (files.FileExists(form.txt3CXOutboundCallNotifierPath.text()))
        part.rows.emplace_back(L"3CX is told", processes.notStarted);
    else
        part.Warn(L"3CX's call trigger is not there: see CorvaneCheck wiring");
    if (!form.chkGlobalEnable.checked())
        part.Warn(L"the master switch is off: nothing is dialed");
    return part;
}

}  // namespace corvane
