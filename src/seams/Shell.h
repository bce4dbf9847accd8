#pragma once

#include <string>

namespace corvane {

enum class SpecialFolder { Desktop = 16, RoamingAppData = 26, CommonAppData = 35 };

class Shell {
public:
    virtual ~Shell() = default;
    // Opens a file with its associated program, normal window. The shell's result: above 32 is
    // success.
    virtual int OpenFile(const std::wstring& path) = 0;
    // Path without a trailing backslash; empty when the system does not know the folder.
    [[nodiscard]] virtual std::wstring FolderPath(SpecialFolder folder) const = 0;
};

}  // namespace corvane
