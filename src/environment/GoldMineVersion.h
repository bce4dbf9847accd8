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

    // What has to be known of a GoldMine before it is worked with: its version, and that its
    // dialing is set up. Done once, and again until it succeeds; false when it does not, which the
    // user has been told.
    [[nodiscard]] bool Meet();

    // False when the version cannot be read or parsed; the user has been told.
    [[nodiscard]] bool CheckGoldMineVersion(bool& versionOK);

    // Enables what the version allows and sets up GoldMine's dialing. False ends start-up.
    [[nodiscard]] bool ApplyGoldMineVersion();

private:
    [[nodiscard]] bool ReadVersion(bool& versionOK);
    [[nodiscard]] bool Fail(std::wstring_view text);

    Form& form_;
    Macro& macro_;
    GoldMineIniSetup& iniSetup_;
    StatusWriter& status_;
    MessageBoxes& boxes_;
    bool met_ = false;
};

}  // namespace corvane
