#pragma once

#include <string_view>

namespace corvane {

class Form;
class GoldMineIniSetup;
class Macro;
class MessageBoxes;
class StatusWriter;

// Which GoldMine runs, and whether it is recent enough: 6.7 or later.
class GoldMineVersion {
public:
    GoldMineVersion(Form& form, Macro& macro, GoldMineIniSetup& iniSetup, StatusWriter& status,
                    MessageBoxes& boxes);

    // False when the version cannot be read or parsed; the user has been told.
    [[nodiscard]] bool CheckGoldMineVersion(bool& versionOK);

    // Enables what the version allows and sets up GoldMine's dialing. False ends start-up.
    [[nodiscard]] bool ApplyGoldMineVersion();

private:
    Form& form_;
    Macro& macro_;
    GoldMineIniSetup& iniSetup_;
    StatusWriter& status_;
    MessageBoxes& boxes_;
};

}  // namespace corvane
