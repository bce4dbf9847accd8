#pragma once

#include <functional>

#include "app/CallParameters.h"

namespace corvane {

class Dispatcher;
class ErrorReport;
class Form;
class GoldMineProcess;
class GoldMineVersion;
class MessageBoxes;
class Settings;
class Status;
class ThreeCXIntegration;
struct ProgramInfo;

// What start-up leaves to do: nothing but to unload, or a window that waits for the user.
enum class RunOutcome { End, WindowShown };

// The load of the main window, in its fixed order.
class StartUp {
public:
    struct Parts {
        Form& form;
        const ProgramInfo& program;
        Status& status;
        Settings& settings;
        ThreeCXIntegration& threeCX;
        CallParameters& parameters;
        GoldMineProcess& goldMineProcess;
        GoldMineVersion& goldMineVersion;
        Dispatcher& dispatcher;
        MessageBoxes& boxes;
        ErrorReport& errors;
    };

    explicit StartUp(const Parts& parts) : parts_(parts) {}

    [[nodiscard]] RunOutcome Run();

private:
    [[nodiscard]] bool LoadConfiguration();
    // A step whose failure, for any reason, is told as a failed load of the configuration.
    [[nodiscard]] bool Succeeds(const std::function<bool()>& step);
    [[nodiscard]] RunOutcome StayDisabled(bool paramsFound);
    [[nodiscard]] bool PrepareGoldMine(bool paramsFound);
    [[nodiscard]] RunOutcome RunInMode(bool paramsFound);

    Parts parts_;
};

}  // namespace corvane
