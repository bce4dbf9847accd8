#include "support/windows/TemporaryFolder.h"

#include <windows.h>

#include <atomic>

#include "support/windows/Files.h"
#include "support/windows/Folders.h"

namespace test_support {

TemporaryFolder::TemporaryFolder(std::wstring_view name) {
    static std::atomic<int> count = 0;
    wchar_t temporary[MAX_PATH + 1];
    path_.assign(temporary, GetTempPathW(MAX_PATH + 1, temporary));  // ends in a backslash
    path_ += std::wstring(name) + L"-" + std::to_wstring(GetCurrentProcessId()) + L"-" +
             std::to_wstring(++count);
    MakeFolder(pathWithBackslash());
}

TemporaryFolder::~TemporaryFolder() {
    // A virus scanner may hold a file: what stays then is no test's matter.
    RemoveFolder(pathWithBackslash());
}

std::wstring TemporaryFolder::file(std::wstring_view name) const {
    return pathWithBackslash() + std::wstring(name);
}

std::wstring TemporaryFolder::Write(std::wstring_view name, std::string_view content) const {
    WriteFileText(file(name), content);
    return file(name);
}

}  // namespace test_support
