#pragma once

#include <gtest/gtest.h>

#include <string>

#include "platform/kit/Windows.h"

namespace corvane::test {

// An existing file or folder that the test holds open; what is not shared is locked.
class OpenFile {
public:
    OpenFile(const std::wstring& path, DWORD access, DWORD sharing)
        : handle_(CreateFileW(path.c_str(), access, sharing, nullptr, OPEN_EXISTING,
                              FILE_FLAG_BACKUP_SEMANTICS, nullptr)) {
        EXPECT_NE(handle_, INVALID_HANDLE_VALUE);
    }
    ~OpenFile() { CloseHandle(handle_); }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    [[nodiscard]] HANDLE get() const { return handle_; }

private:
    HANDLE handle_;
};

}  // namespace corvane::test
