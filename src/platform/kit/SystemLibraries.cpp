#include "platform/kit/SystemLibraries.h"

#include <string>

namespace corvane {

void LoadFromSystemFolderOnly() {
    using SetDirectories = BOOL(WINAPI*)(DWORD);
    const auto setDirectories =
        SystemFunction<SetDirectories>(L"kernel32.dll", "SetDefaultDllDirectories");
    // A Windows 7 without its updates lacks it; there the working folder at least is left out.
    if (!setDirectories || !setDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32))
        SetDllDirectoryW(L"");
}

HMODULE LoadFromSystemFolder(const wchar_t* library) {
    wchar_t folder[MAX_PATH];
    const std::wstring path =
        std::wstring(folder, GetSystemDirectoryW(folder, MAX_PATH)) + L"\\" + library;
    return LoadLibraryExW(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
}

void LoadWhatControlsBind() {
    for (const wchar_t* library : {L"uxtheme.dll", L"msimg32.dll"})
        LoadFromSystemFolder(library);
}

}  // namespace corvane
