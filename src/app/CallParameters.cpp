#include "app/CallParameters.h"

#include <utility>

#include "app/Status.h"
#include "calls/CallerID.h"
#include "ui/form/Form.h"
#include "util/CommandLine.h"
#include "util/RuntimeError.h"
#include "util/Text.h"

namespace corvane {

CallParameters::CallParameters(Form& form, Status& status, std::wstring versionText,
                               std::wstring rawCommandLine)
    : form_(form),
      status_(status),
      versionText_(std::move(versionText)),
      rawCommandLine_(std::move(rawCommandLine)) {}

CallParameters::CommandLine CallParameters::GetCommandLine() {
    const std::wstring_view text = TrimBlanks(rawCommandLine_);
    if (text.empty()) {
        status_.WriteStatus(Join(L"Corvane ", versionText_, L" started without params."));
        return {};
    }
    status_.WriteStatus(Join(L"Corvane ", versionText_, L" started with param(s): ", text, L"."));
    CommandLine commandLine;
    commandLine.found = true;
    commandLine.tokens = CommandLineTokens(text);
    return commandLine;
}

ParsedParameters CallParameters::ParseCallParameters() {
    return NamedProcedure(L"ParseCallParameters", [this] { return Parse(); });
}

ParsedParameters CallParameters::Parse() {
    const CommandLine commandLine = GetCommandLine();
    ParsedParameters parsed;
    parsed.ParamsFound = commandLine.found;
    if (!commandLine.found)
        return parsed;

    const auto& tokens = commandLine.tokens;
    if (tokens.size() == 1) {
        form_.txtOutboundPhone.setText(TrimBlanks(tokens[0]));
        return parsed;
    }
    // After a rejected caller ID, unknown tokens reach the log only when the log is on.
    LogMode unknownTokenMode = LogMode::Forced;
    for (std::size_t index = 0; index < tokens.size(); ++index) {
        const std::wstring& token = tokens[index];
        const auto [name, value] = SwitchIn(token);
        if (name == L"/N") {
            form_.txtNotifType.setText(value);
        } else if (name == L"/C") {
            form_.txtCallerID.setText(value);
            parsed.ParseOK = NormalizeCallerID(form_, status_);
            unknownTokenMode = parsed.ParseOK ? LogMode::Forced : LogMode::AsConfigured;
        } else if (name == L"/T") {
            form_.txtCallType.setText(value);
        } else if (name == L"/I") {
            form_.txtCallIdentifier.setText(value);
            status_.setCallIdentifier(form_.txtCallIdentifier.text());
        } else {
            status_.WriteStatus(
                Join(L"Unrecognized parameter #", std::to_wstring(index), L": ", token, L"."),
                unknownTokenMode);
        }
    }
    return parsed;
}

void CallParameters::LeaveParameterBox(const TextBox& box, bool changed) {
    if (&box == &form_.txtNotifType)
        form_.txtNotifType.setText(UpperCase(box.text()));
    else if (&box == &form_.txtCallType)
        form_.txtCallType.setText(UpperCase(box.text()));
    if (&box == &form_.txtOutboundPhone || &box == &form_.txtNotifType ||
        &box == &form_.txtCallerID || &box == &form_.txtCallType ||
        &box == &form_.txtCallIdentifier) {
        EvaluateProcessCall();
    }
    if (&box == &form_.txtCallerID && changed) {
        // A rejected one was reported; the boxes stay editable all the same.
        static_cast<void>(NormalizeTypedCallerID());
    }
}

bool CallParameters::NormalizeTypedCallerID() {
    if (NormalizeCallerID(form_, status_))
        return true;
    // Otherwise the number of before would be handled.
    form_.txtCallerIDDigits.setText(L"");
    form_.txtCallerIDFormatted.setText(L"");
    return false;
}

bool CallParameters::CallerIDRejected() {
    return form_.txtOutboundPhone.text().empty() && form_.txtCallerIDDigits.text().empty() &&
           form_.txtCallerIDFormatted.text().empty() && !form_.txtCallerID.text().empty() &&
           !NormalizeTypedCallerID();
}

void CallParameters::EvaluateProcessCall() {
    const std::wstring event =
        Join(form_.txtCallerID.text(), form_.txtCallType.text(), form_.txtCallIdentifier.text());
    form_.cmdProcessCall.setEnabled(!TrimBlanks(form_.txtOutboundPhone.text()).empty() ||
                                    !TrimBlanks(event).empty());
}

}  // namespace corvane
