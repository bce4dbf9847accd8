#include "platform/kit/SystemLibraries.h"

#include <string>

namespace corvane {

namespace {

// Stays loaded for the run: whoever asks for it by its name later gets this one.
HMODULE LoadFromSystemFolder(const wchar_t* library) {
    wchar_t folder[MAX_PATH];
    const std::wstring path =
        std::wstring(folder, GetSystemDirectoryW(folder, MAX_PATH)) + L"\\" + library;
    return LoadLibraryExW(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
}

}  // namespace

void LoadFromSystemFolderOnly() {
    using SetDirectories = BOOL(WINAPI*)(DWORD);
    const auto setDirectories =
        SystemFunction<SetDirectories>(L"kernel32.dll", "SetDefaultDllDirectories");
    // A Windows 7 without its updates lacks it; there the working folder at least is left out.
    if (!setDirectories || !setDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32))
        SetDllDirectoryW(L"");
    // The common controls bind these at their first need, which may pass by what was said above.
    for (const wchar_t* library : {L"uxtheme.dll", L"msimg32.dll"})
        LoadFromSystemFolder(library);
}

FARPROC FindSystemFunction(const wchar_t* library, const char* function) {
    const HMODULE module = LoadFromSystemFolder(library);
    return module ? GetProcAddress(module, function) : nullptr;
}

}  // namespace corvane
