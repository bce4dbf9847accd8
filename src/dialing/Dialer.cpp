#include "dialing/Dialer.h"

#include <string>

#include "seams/MessageBoxes.h"
#include "seams/Processes.h"
#include "seams/StatusWriter.h"
#include "ui/form/Form.h"
#include "ui/form/NumberIn.h"
#include "util/Digits.h"
#include "util/RuntimeError.h"
#include "util/Text.h"

namespace corvane {

namespace {

std::wstring Rightmost(const std::wstring& text, std::int32_t length) {
    if (length < 0)
        throw MakeRuntimeError(ErrorNumber::InvalidProcedureCall);
    const auto kept = static_cast<std::size_t>(length);
    return text.size() > kept ? text.substr(text.size() - kept) : text;
}

}  // namespace

Dialer::Dialer(Form& form, Processes& processes, StatusWriter& status, MessageBoxes& boxes)
    : form_(form), processes_(processes), status_(status), boxes_(boxes) {}

bool Dialer::Dial() {
    const std::wstring received = form_.txtOutboundPhone.text();
    std::wstring number = ExtractDigits(received, true, false);
    form_.txtOutboundPhoneAsDialed.setText(number);
    if (form_.chkTrimOutboundPrefix.checked()) {
        number = Rightmost(number, LongIn(form_.txtOutboundMaxLength));
        form_.txtOutboundPhoneAsDialed.setText(number);
    }

    if (number.empty()) {
        const std::wstring noDigits =
            Join(L"Number to dial ", Quoted(received), L" contains no digits.");
        boxes_.Notify(Join(noDigits,
                           L" For USA Format numbers, GoldMine requires at least 7 digits for "
                           L"outbound dialing.",
                           lineBreak));
        status_.WriteStatus(Join(noDigits, L" Call processing terminated."));
        return false;
    }

    const std::wstring& program = form_.txt3CXOutboundCallNotifierPath.text();
    const std::wstring command = Join(Quoted(program), L" -cmd makecall:", number);
    if (!processes_.StartHidden(program, command)) {
        const std::wstring failed = Join(L"Call to number ", number, L" failed.");
        boxes_.Notify(Join(failed, lineBreak, L"Command: ", command));
        status_.WriteStatus(Join(failed, L" Command:  ", command));
        return false;
    }
    status_.WriteStatus(Join(L"Dialed ", number, L" using 3CX."));
    return true;
}

}  // namespace corvane
