#include "check/platform/WindowsSurvey.h"

#include <array>
#include <cstring>
#include <utility>

#include "platform/goldmine/GoldMineTypeLibrary.h"
#include "platform/kit/ComError.h"
#include "platform/kit/Handles.h"
#include "platform/kit/OwnPlace.h"
#include "util/RuntimeError.h"
#include "util/Text.h"

namespace corvane {

namespace {

constexpr DWORD sharedWithAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

[[noreturn]] void ThrowLastError() {
    const DWORD code = GetLastError();
    // Somebody else keeps it to himself.
    if (code == ERROR_SHARING_VIOLATION)
        throw MakeRuntimeError(ErrorNumber::PermissionDenied);
    throw ErrorFromHResult(HRESULT_FROM_WIN32(code));
}

UniqueHandle Open(const std::wstring& path, DWORD access) {
    return UniqueHandle(CreateFileW(path.c_str(), access, sharedWithAll, nullptr, OPEN_EXISTING,
                                    FILE_FLAG_BACKUP_SEMANTICS, nullptr));
}

bool Exists(const std::wstring& path) {
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

// The text of one that hangs is not waited for.
std::wstring TextOf(HWND window) {
    constexpr UINT patienceMilliseconds = 2000;
    std::array<wchar_t, 2000> text{};
    DWORD_PTR length = 0;
    if (!SendMessageTimeoutW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()),
                             SMTO_ABORTIFHUNG, patienceMilliseconds, &length)) {
        return {};
    }
    return text.data();
}

bool IsMessageBox(HWND window) {
    std::array<wchar_t, 16> name{};
    GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return std::wstring_view(name.data()) == L"#32770" && IsWindowVisible(window);
}

struct Search {
    DWORD process;
    std::vector<std::wstring> texts;
};

using UniqueModule = Unique<HMODULE, &FreeLibrary>;

BOOL CALLBACK NoteBox(HWND window, LPARAM parameter) {
    Search& search = *reinterpret_cast<Search*>(parameter);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process == search.process && IsMessageBox(window)) {
        constexpr int textOfBox = 0xFFFF;
        const HWND text = GetDlgItem(window, textOfBox);
        search.texts.push_back(TextOf(text ? text : window));
    }
    return TRUE;
}

}  // namespace

std::optional<bool> WindowsSurvey::Elevated(ProcessId id) const {
    const UniqueHandle process(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, id));
    UniqueHandle token;
    if (!process || !OpenProcessToken(process.get(), TOKEN_QUERY, token.put()))
        return std::nullopt;
    // Where nobody is asked for consent, rights are the same in all programs of a user.
    TOKEN_ELEVATION_TYPE elevation{};
    DWORD size = 0;
    if (!GetTokenInformation(token.get(), TokenElevationType, &elevation, sizeof(elevation), &size))
        return std::nullopt;
    return elevation == TokenElevationTypeFull;
}

bool WindowsSurvey::MayAddTo(const std::wstring& folder) const {
    return static_cast<bool>(Open(folder, FILE_ADD_FILE));
}

bool WindowsSurvey::MayList(const std::wstring& folder) const {
    return static_cast<bool>(Open(folder, FILE_LIST_DIRECTORY));
}

std::wstring WindowsSurvey::WhyNotAppendTo(const std::wstring& file) const {
    try {
        const OwnPlace place(file);
        if (!place.HasFolder())
            throw MakeRuntimeError(ErrorNumber::PermissionDenied);
        if (Exists(file)) {
            const UniqueHandle opened = Open(file, FILE_APPEND_DATA);
            if (!opened)
                ThrowLastError();
            if (!place.HasFile(opened.get()))
                throw MakeRuntimeError(ErrorNumber::PermissionDenied);
            return {};
        }
        // It will be made in the first folder above that is there, with the folders in between.
        std::wstring folder = file.substr(0, file.find_last_of(L'\\'));
        const DWORD access = Exists(folder) ? FILE_ADD_FILE : FILE_ADD_SUBDIRECTORY;
        while (!Exists(folder) && folder.find(L'\\') != std::wstring::npos)
            folder.erase(folder.find_last_of(L'\\'));
        if (!Open(folder, access))
            ThrowLastError();
        return {};
    } catch (const RuntimeError& error) {
        return error.description;
    }
}

std::vector<std::wstring> WindowsSurvey::BoxesOf(ProcessId id) const {
    Search search{id, {}};
    EnumWindows(&NoteBox, reinterpret_cast<LPARAM>(&search));
    return std::move(search.texts);
}

std::wstring WindowsSurvey::FileVersion(const std::wstring& file) const {
    std::array<wchar_t, MAX_PATH> system{};
    GetSystemDirectoryW(system.data(), static_cast<UINT>(system.size()));
    const std::wstring path = file.find(L'\\') == std::wstring::npos
                                  ? Join(AddTrailingBackslash(system.data()), file)
                                  : file;
    const UniqueModule module(LoadLibraryExW(path.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE));
    const HRSRC resource =
        module ? FindResourceW(module.get(), MAKEINTRESOURCEW(VS_VERSION_INFO), RT_VERSION)
               : nullptr;
    const HGLOBAL loaded = resource ? LoadResource(module.get(), resource) : nullptr;
    const void* const bytes = loaded ? LockResource(loaded) : nullptr;
    if (!bytes)
        return {};
    // What is fixed in it stands behind its name, at a place that four divides.
    constexpr std::size_t fixedInfo = 40;
    VS_FIXEDFILEINFO info{};
    if (SizeofResource(module.get(), resource) < fixedInfo + sizeof(info))
        return {};
    std::memcpy(&info, static_cast<const char*>(bytes) + fixedInfo, sizeof(info));
    if (info.dwSignature != VS_FFI_SIGNATURE)
        return {};
    return Join(std::to_wstring(HIWORD(info.dwFileVersionMS)), L".",
                std::to_wstring(LOWORD(info.dwFileVersionMS)), L".",
                std::to_wstring(HIWORD(info.dwFileVersionLS)), L".",
                std::to_wstring(LOWORD(info.dwFileVersionLS)));
}

void WindowsSurvey::ReadAutomationClass() const {
    static_cast<void>(ReadGoldMineTypeLibrary());
}

}  // namespace corvane
