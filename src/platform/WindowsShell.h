#pragma once

#include <string>

#include "seams/Shell.h"

namespace corvane {

class WindowsShell final : public Shell {
public:
    int OpenFile(const std::wstring& path) override;
    [[nodiscard]] std::wstring FolderPath(SpecialFolder folder) const override;
};

}  // namespace corvane
