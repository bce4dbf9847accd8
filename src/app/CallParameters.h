#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace corvane {

class Form;
class Status;
class TextBox;

struct ParsedParameters {
    bool ParamsFound = false;
    bool ParseOK = true;  // false when the caller ID was rejected
};

// Reads what the current event is: switches from 3CX, or one number from GoldMine.
class CallParameters {
public:
    CallParameters(Form& form, Status& status, std::wstring versionText,
                   std::wstring rawCommandLine);

    // Fills the parameter boxes; a caller ID is normalised at once. Raises with
    // "ParseCallParameters: " before the description.
    ParsedParameters ParseCallParameters();

    // The user leaves a parameter box: the letters become upper case, a changed caller ID is
    // normalised as from the command line, and the Process Call button is evaluated again.
    void LeaveParameterBox(const TextBox& box, bool changed);

    // Whether nothing but a caller ID stands in the boxes that is rejected, which is said again.
    [[nodiscard]] bool CallerIDRejected();

private:
    struct CommandLine {
        std::vector<std::wstring> tokens;
        bool found = false;  // there was more than blanks
    };

    // Writes the start-up echo line and splits the command line.
    [[nodiscard]] CommandLine GetCommandLine();
    [[nodiscard]] ParsedParameters Parse();
    // One that is rejected leaves no digits of a caller ID before.
    [[nodiscard]] bool NormalizeTypedCallerID();
    void EvaluateProcessCall();

    Form& form_;
    Status& status_;
    std::wstring versionText_;
    std::wstring rawCommandLine_;
};

}  // namespace corvane
