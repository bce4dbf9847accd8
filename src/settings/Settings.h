#pragma once

namespace corvane {

class Control;
class Form;
class MessageBoxes;
class Registry;
class StatusWriter;
class cSimuIniFile;

// Sets an option's control from its stored text or its default. Raises with the option's name
// before the description when the text does not convert.
void LoadOption(Control& option, cSimuIniFile& store);

// The user's options between the registry and the form's controls. The call logic reads the
// controls only.
class Settings {
public:
    Settings(Form& form, Registry& registry, StatusWriter& status, MessageBoxes& boxes);

    // Sets every option's control from its stored text or its default. An unreadable registry or
    // a stored text that does not convert raises; there is no fallback per entry.
    void LoadSettings();

    // False, with nothing written, when a link is wanted and no folder is given. Registry
    // failures raise; what was written before stays written.
    [[nodiscard]] bool SaveSettings();

    // Sets the options from their defaults, without asking and without saving.
    void RestoreDefaults();

private:
    void SaveOption(const Control& option, cSimuIniFile& store);

    Form& form_;
    Registry& registry_;
    StatusWriter& status_;
    MessageBoxes& boxes_;
};

}  // namespace corvane
