#pragma once

#include <optional>
#include <string>
#include <vector>

#include "check/CheckSurroundings.h"

namespace corvane {

// A setting as it stands in the registry.
struct SavedSetting {
    std::wstring name;
    std::optional<std::wstring> saved;  // nothing when it is missing: its default counts
    std::wstring byDefault;
    std::wstring_view note;  // why the program does not take it
};
[[nodiscard]] std::vector<SavedSetting> SavedSettings(const CheckSurroundings& around);

// What something is, and where; either may be unknown.
struct Version {
    std::wstring_view what;
    std::wstring version;
    std::wstring path = {};
};
[[nodiscard]] std::vector<Version> Versions(const CheckSurroundings& around);

}  // namespace corvane
