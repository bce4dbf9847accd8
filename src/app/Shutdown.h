#pragma once

namespace corvane {

class Clock;
class ErrorReport;
class Form;
class GMUI;
class GoldMineProcess;
class MessageBoxes;
class Settings;
class StatusWriter;
class WindowCommands;

// The unload of the main window, for every way the program ends.
class Shutdown {
public:
    struct Parts {
        Form& form;
        Settings& settings;
        WindowCommands& windows;
        GMUI& gmui;
        GoldMineProcess& goldMineProcess;
        StatusWriter& status;
        MessageBoxes& boxes;
        Clock& clock;
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
