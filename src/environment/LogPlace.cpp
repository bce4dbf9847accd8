#include "environment/LogPlace.h"

#include <string_view>

#include "seams/FileSystem.h"
#include "seams/Shell.h"
#include "util/Text.h"

namespace corvane {

namespace {

constexpr std::wstring_view maker = L"Halvorn Systems";

}  // namespace

std::wstring LogPath(const Shell& shell, FileSystem& files, const std::wstring& executableName) {
    std::wstring folder = shell.FolderPath(SpecialFolder::CommonAppData);
    if (folder.empty())
        return {};
    for (const std::wstring_view level : {maker, std::wstring_view(executableName)}) {
        folder = AddTrailingBackslash(folder).append(level);
        if (!files.MakeFolder(folder))
            return {};
    }
    return Join(folder, L"\\", executableName, L".log");
}

}  // namespace corvane
