#include "support/windows/Folders.h"

#include <windows.h>

namespace test_support {

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

}  // namespace test_support
