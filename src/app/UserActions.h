#pragma once

#include "ui/form/FormActions.h"

namespace corvane {

class CallInProgress;
class CallParameters;
class Dispatcher;
class ErrorReport;
class FieldChecks;
class FileOpener;
class Form;
class GMUI;
class GoldMineProcess;
class GoldMineVersion;
class MessageBoxes;
class RecordingLink;
class SettingQuestions;
class Settings;
class Shutdown;
class ThreeCXIntegration;

// Connects what the user does in the window with the procedures that do it.
class UserActions final : public FormActions {
public:
    struct Parts {
        Form& form;
        Settings& settings;
        SettingQuestions& questions;
        FieldChecks& fieldChecks;
        CallParameters& parameters;
        Dispatcher& dispatcher;
        CallInProgress& call;
        RecordingLink& recordingLink;
        GoldMineProcess& goldMineProcess;
        GoldMineVersion& goldMineVersion;
        GMUI& gmui;
        ThreeCXIntegration& threeCX;
        FileOpener& fileOpener;
        Shutdown& shutdown;
        MessageBoxes& boxes;
        ErrorReport& errors;
    };

    explicit UserActions(const Parts& parts);

    void ButtonClicked(CommandButton& button) override;
    void CheckBoxClicked(CheckBox& box) override;
    void OptionClicked(OptionButton& option) override;
    [[nodiscard]] bool MayLeave(TextBox& box, bool changed) override;
    void Activated(bool fromAnotherProgram) override;
    [[nodiscard]] bool MayClose() override;

private:
    void ProcessCallByHand();
    [[nodiscard]] bool ReadyForCall();

    Parts parts_;
};

}  // namespace corvane
