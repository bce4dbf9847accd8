#include "Files.h"

#include <gtest/gtest.h>

#include "Process.h"
#include "Text.h"

namespace end_to_end {
namespace {

std::wstring OwnFolder() {
    wchar_t path[MAX_PATH];
    const std::wstring text(path, GetModuleFileNameW(nullptr, path, MAX_PATH));
    return text.substr(0, text.rfind(L'\\') + 1);
}

std::wstring FullPath(const std::wstring& path) {
    wchar_t full[MAX_PATH];
    return std::wstring(full, GetFullPathNameW(path.c_str(), MAX_PATH, full, nullptr));
}

}  // namespace

std::wstring BuiltFile(std::string_view name) {
    return FullPath(OwnFolder() + L"..\\" + Wide(name));
}

std::wstring StandinFile(std::string_view name) {
    return FullPath(OwnFolder() + Wide(STANDIN_FOLDER) + L"/" + Wide(name));
}

std::optional<std::string> ReadFileText(const std::wstring& path) {
    const KernelHandle file(CreateFileW(path.c_str(), GENERIC_READ,
                                        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                        nullptr, OPEN_EXISTING, 0, nullptr));
    if (!file.valid()) {
        return std::nullopt;
    }
    std::string text;
    char buffer[4096];
    DWORD read = 0;
    while (ReadFile(file.get(), buffer, sizeof buffer, &read, nullptr) && read > 0) {
        text.append(buffer, read);
    }
    return text;
}

void WriteFileText(const std::wstring& path, std::string_view text) {
    const KernelHandle file(
        CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    DWORD written = 0;
    ASSERT_TRUE(file.valid()) << Utf8(path);
    ASSERT_TRUE(
        WriteFile(file.get(), text.data(), static_cast<DWORD>(text.size()), &written, nullptr));
}

void CopyFileTo(const std::wstring& from, const std::wstring& to) {
    ASSERT_TRUE(CopyFileW(from.c_str(), to.c_str(), FALSE)) << Utf8(from);
}

bool FileIsThere(const std::wstring& path) {
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

void DeleteFileWhenFree(const std::wstring& path) {
    EXPECT_TRUE(WaitUntil([&] {
        if (DeleteFileW(path.c_str())) {
            return true;
        }
        const DWORD error = GetLastError();
        return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
    })) << Utf8(path);
}

void MakeFolder(const std::wstring& path) {
    // Every level that is missing.
    for (size_t slash = path.find(L'\\'); slash != std::wstring::npos;
         slash = path.find(L'\\', slash + 1)) {
        CreateDirectoryW(path.substr(0, slash).c_str(), nullptr);
    }
}

void EmptyFolder(const std::wstring& path) {
    MakeFolder(path);
    WIN32_FIND_DATAW entry;
    const HANDLE find = FindFirstFileW((path + L"*").c_str(), &entry);
    if (find == INVALID_HANDLE_VALUE) {
        return;
    }
    do {
        const std::wstring name = entry.cFileName;
        if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
            DeleteFileW((path + name).c_str());
        } else if (name != L"." && name != L"..") {
            RemoveFolder(path + name + L"\\");
        }
    } while (FindNextFileW(find, &entry));
    FindClose(find);
}

void RemoveFolder(const std::wstring& path) {
    EmptyFolder(path);
    RemoveDirectoryW(path.c_str());
}

KernelHandle HoldFileAlone(const std::wstring& path) {
    return KernelHandle(CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                    OPEN_ALWAYS, 0, nullptr));
}

KernelHandle HoldFileAgainstWriting(const std::wstring& path) {
    return KernelHandle(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, 0, nullptr));
}

void AgeFile(const std::wstring& path, long long seconds) {
    const KernelHandle file(
        CreateFileW(path.c_str(), FILE_WRITE_ATTRIBUTES, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    FILETIME now{};
    GetSystemTimeAsFileTime(&now);
    ULARGE_INTEGER time{};
    time.LowPart = now.dwLowDateTime;
    time.HighPart = now.dwHighDateTime;
    time.QuadPart -= static_cast<ULONGLONG>(seconds) * 10'000'000ULL;
    const FILETIME aged{time.LowPart, time.HighPart};
    ASSERT_TRUE(SetFileTime(file.get(), nullptr, nullptr, &aged)) << Utf8(path);
}

}  // namespace end_to_end
