#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Handles.h"

namespace end_to_end {

// Paths of the machine under test. Folders end in a backslash.
std::wstring BuiltFile(std::string_view name);    // of the build's folder
std::wstring StandinFile(std::string_view name);  // of the practice programs

std::optional<std::string> ReadFileText(const std::wstring& path);
void WriteFileText(const std::wstring& path, std::string_view text);
void CopyFileTo(const std::wstring& from, const std::wstring& to);
bool FileIsThere(const std::wstring& path);
// Waits until nobody else has it open; a file that is not there is no failure.
void DeleteFileWhenFree(const std::wstring& path);
void MakeFolder(const std::wstring& path);
// The folder is there and empty afterwards; sub-folders go too.
void EmptyFolder(const std::wstring& path);
// The folder is gone afterwards with all that stood in it.
void RemoveFolder(const std::wstring& path);
// Nobody else can open the file while the handle lives.
KernelHandle HoldFileAlone(const std::wstring& path);
// Others can read the file but not write to it while the handle lives.
KernelHandle HoldFileAgainstWriting(const std::wstring& path);
// Sets the last-write time to so many seconds before now.
void AgeFile(const std::wstring& path, long long seconds);

}  // namespace end_to_end
