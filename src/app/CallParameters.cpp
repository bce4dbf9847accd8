#include "app/CallParameters.h"

#include "app/Status.h"
#include "calls/CallerID.h"
#include "ui/form/Form.h"
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
    if (text.find(L'/') == std::wstring_view::npos) {
        // A number from GoldMine, in whatever form the user typed it.
        commandLine.tokens.emplace_back(text);
    } else {
        commandLine.tokens = SplitSwitches(text);
    }
    return commandLine;
}

std::vector<std::wstring> CallParameters::SplitSwitches(std::wstring_view text) {
    std::vector<std::wstring> tokens;
    bool open = false;
    for (const wchar_t character : text) {
        if (character == L'"')
            continue;  // quotes neither end a token nor protect blanks
        if (character == L' ') {
            open = false;
            continue;
        }
        if (!open)
            tokens.emplace_back();
        open = true;
        tokens.back() += character;
    }
    return tokens;
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
        const std::wstring_view name = std::wstring_view(token).substr(0, 2);
        constexpr std::size_t valueBegin = 3;  // behind the separator, whatever it is
        const std::wstring_view value =
            token.size() > valueBegin
                ? TrimTrailingBlanks(std::wstring_view(token).substr(valueBegin))
                : std::wstring_view();
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
