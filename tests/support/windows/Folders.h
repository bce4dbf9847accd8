#pragma once

#include <string>

namespace test_support {

// Folders end in a backslash.

void MakeFolder(const std::wstring& path);
// The folder is there and empty afterwards; sub-folders go too.
void EmptyFolder(const std::wstring& path);
// The folder is gone afterwards with all that stood in it.
void RemoveFolder(const std::wstring& path);

// A second way to a folder for its lifetime: what is written there goes to the target. Both without
// the backslashes.
class LinkedFolder {
public:
    LinkedFolder(std::wstring link, const std::wstring& target);
    LinkedFolder(const LinkedFolder&) = delete;
    LinkedFolder& operator=(const LinkedFolder&) = delete;
    ~LinkedFolder();

private:
    std::wstring link_;
};

}  // namespace test_support
