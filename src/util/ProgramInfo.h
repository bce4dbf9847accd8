#pragma once

#include <string>

namespace corvane {

// What the running program knows of itself.
struct ProgramInfo {
    std::wstring folder;          // without a trailing backslash
    std::wstring executableName;  // without ".exe"
    int majorVersion = 0;
    int minorVersion = 0;
    int revision = 0;

    // The third place is always 0: "1.0.0.1".
    [[nodiscard]] std::wstring VersionText() const {
        return std::to_wstring(majorVersion) + L"." + std::to_wstring(minorVersion) + L".0." +
               std::to_wstring(revision);
    }
    [[nodiscard]] std::wstring ExecutablePath() const {
        return folder + L"\\" + executableName + L".exe";
    }
};

}  // namespace corvane
