#pragma once

#include <string>
#include <vector>

namespace corvane {

class Form;
class Registry;

// A setting that the program does not take as it is stored.
struct UnfitSetting {
    std::wstring name;
    std::wstring text;
    bool converts = false;  // but is none that its box in the window would take
};

// Loads all settings of this user; one that does not convert counts as its default. Raises when the
// registry cannot be read.
[[nodiscard]] std::vector<UnfitSetting> LoadSavedSettings(Form& form, Registry& registry);

}  // namespace corvane
