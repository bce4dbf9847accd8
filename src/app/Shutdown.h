#pragma once

namespace corvane {

class CompleteCallDialog;
class ErrorReport;
class Form;
class GMUI;
class GoldMineProcess;
class MessageBoxes;
class Settings;
class StatusWriter;

// The unload of the main window, for every way the program ends.
class Shutdown {
public:
    struct Parts {
        Form& form;
        Settings& settings;
        CompleteCallDialog& dialog;
        GMUI& gmui;
        GoldMineProcess& goldMineProcess;
        StatusWriter& status;
        MessageBoxes& boxes;
        ErrorReport& errors;
    };

    explicit Shutdown(const Parts& parts) : parts_(parts) {}

    // False when the user cancelled or the settings could not be saved: the window stays. Also
    // when it is in progress already: its wait lets the user reach the window.
    [[nodiscard]] bool Unload();
    // From the user's wish to close until the program ends or the user decides otherwise.
    [[nodiscard]] bool unloading() const { return unloading_; }

private:
    [[nodiscard]] bool SaveBeforeExit();
    void FinishCallDialog();

    Parts parts_;
    bool unloading_ = false;
};

}  // namespace corvane
