#pragma once

#include <string>

namespace test_support {

// Folders end in a backslash.

void MakeFolder(const std::wstring& path);
// The folder is there and empty afterwards; sub-folders go too.
void EmptyFolder(const std::wstring& path);
// The folder is gone afterwards with all that stood in it.
void RemoveFolder(const std::wstring& path);

}  // namespace test_support
