#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "support/windows/KernelHandle.h"

namespace test_support {

// Nothing when the file is not there or cannot be read; whoever has it open does not matter.
std::optional<std::string> ReadFileText(const std::wstring& path);
void WriteFileText(const std::wstring& path, std::string_view text);
void CopyFileTo(const std::wstring& from, const std::wstring& to);
bool FileIsThere(const std::wstring& path);
// Waits until nobody else has it open; a file that is not there is no failure.
void DeleteFileWhenFree(const std::wstring& path);
// Sets the last-write time to so many seconds before now.
void AgeFile(const std::wstring& path, long long seconds);

// An existing file or folder, open while the handle lives; what is not shared is locked.
KernelHandle OpenExisting(const std::wstring& path, DWORD access, DWORD sharing);
// Nobody else can open the file while the handle lives; it need not be there before.
KernelHandle HoldFileAlone(const std::wstring& path);
// Others can read the file but not write to it while the handle lives.
KernelHandle HoldFileAgainstWriting(const std::wstring& path);

}  // namespace test_support
