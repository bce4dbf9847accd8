#include "support/windows/Folders.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <utility>

#include "support/windows/Encoding.h"
#include "support/windows/Files.h"
#include "support/windows/Process.h"
#include "support/windows/Waiting.h"
#include "support/windows/Wine.h"

namespace test_support {
namespace {

// Wine makes no junctions, but walks through the links of the system below it.
std::wstring UnixName(const std::wstring& path) {
    using Function = char*(CDECL*)(const wchar_t*);
    const auto unixName = reinterpret_cast<Function>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "wine_get_unix_file_name")));
    char* name = unixName(path.c_str());
    const std::wstring result = Wide(name);
    HeapFree(GetProcessHeap(), 0, name);
    return result;
}

void RunUnix(std::wstring command, std::initializer_list<std::wstring> paths) {
    for (const std::wstring& path : paths)
        command += L" \"" + UnixName(path) + L"\"";
    RunToEnd(L"C:\\windows\\system32\\start.exe", L"/unix " + command);
}

}  // namespace

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
    if (find == INVALID_HANDLE_VALUE)
        return;
    do {
        const std::wstring name = entry.cFileName;
        if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0)
            DeleteFileW((path + name).c_str());
        else if (name != L"." && name != L"..")
            RemoveFolder(path + name + L"\\");
    } while (FindNextFileW(find, &entry));
    FindClose(find);
}

void RemoveFolder(const std::wstring& path) {
    EmptyFolder(path);
    RemoveDirectoryW(path.c_str());
}

LinkedFolder::LinkedFolder(std::wstring link, const std::wstring& target) : link_(std::move(link)) {
    if (InWine()) {
        RunUnix(L"/bin/ln -s", {target, link_});
    } else {
        RunToEnd(L"C:\\Windows\\System32\\cmd.exe",
                 L"/c mklink /J \"" + link_ + L"\" \"" + target + L"\"");
    }
    EXPECT_TRUE(WaitUntil([&] { return FileIsThere(link_); })) << Utf8(link_);
}

LinkedFolder::~LinkedFolder() {
    if (InWine())
        RunUnix(L"/bin/rm", {link_});
    else
        RemoveDirectoryW(link_.c_str());
    EXPECT_TRUE(WaitUntil([&] { return !FileIsThere(link_); })) << Utf8(link_);
}

}  // namespace test_support
