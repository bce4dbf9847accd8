#include "platform/WindowsShell.h"

#include <array>

#include "platform/kit/AnsiText.h"
#include "platform/kit/Windows.h"

#include <shellapi.h>
#include <shlobj.h>

namespace corvane {

int WindowsShell::OpenFile(const std::wstring& path) {
    constexpr int showNormal = 5;
    const HINSTANCE result =
        ShellExecuteA(nullptr, "open", AnsiFromText(path).c_str(), nullptr, nullptr, showNormal);
    return static_cast<int>(reinterpret_cast<INT_PTR>(result));
}

std::wstring WindowsShell::FolderPath(SpecialFolder folder) const {
    std::array<char, MAX_PATH> path{};
    if (!SHGetSpecialFolderPathA(nullptr, path.data(), static_cast<int>(folder), FALSE))
        return {};
    return TextFromAnsi(path.data());
}

}  // namespace corvane
