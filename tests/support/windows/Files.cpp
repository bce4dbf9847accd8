#include "support/windows/Files.h"

#include <gtest/gtest.h>

#include "support/windows/Encoding.h"
#include "support/windows/Waiting.h"

namespace test_support {

std::optional<std::string> ReadFileText(const std::wstring& path) {
    const KernelHandle file(CreateFileW(path.c_str(), GENERIC_READ,
                                        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                        nullptr, OPEN_EXISTING, 0, nullptr));
    if (!file.valid())
        return std::nullopt;
    std::string text;
    char buffer[4096];
    DWORD read = 0;
    while (ReadFile(file.get(), buffer, sizeof buffer, &read, nullptr) && read > 0)
        text.append(buffer, read);
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
        if (DeleteFileW(path.c_str()))
            return true;
        const DWORD error = GetLastError();
        return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
    })) << Utf8(path);
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

KernelHandle OpenExisting(const std::wstring& path, DWORD access, DWORD sharing) {
    KernelHandle file(CreateFileW(path.c_str(), access, sharing, nullptr, OPEN_EXISTING,
                                  FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    EXPECT_TRUE(file.valid()) << Utf8(path);
    return file;
}

KernelHandle HoldFileAlone(const std::wstring& path) {
    return KernelHandle(CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                    OPEN_ALWAYS, 0, nullptr));
}

KernelHandle HoldFileAgainstWriting(const std::wstring& path) {
    return OpenExisting(path, GENERIC_READ, FILE_SHARE_READ);
}

}  // namespace test_support
