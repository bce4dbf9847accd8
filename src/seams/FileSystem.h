#pragma once

#include <cstdint>
#include <string>

namespace corvane {

struct NewestFile {
    std::wstring name;    // without the folder; empty when no file qualified
    double modified = 0;  // automation date in local time; looked at only with a name
    std::int32_t filesSeen = 0;
    bool complete = true;  // false: the folder went away while it was read
};

// What the program asks of files and folders; modFile is the real thing.
class FileSystem {
public:
    virtual ~FileSystem() = default;
    [[nodiscard]] virtual bool FileExists(const std::wstring& path) const = 0;
    [[nodiscard]] virtual bool FolderExists(const std::wstring& path) const = 0;
    // Creates one folder level; true when the folder is there afterwards.
    virtual bool MakeFolder(const std::wstring& path) = 0;
    // Copies a file to where nothing stands yet; true when a file is there afterwards.
    virtual bool CopyToNew(const std::wstring& from, const std::wstring& to) = 0;
    // Appends the text as given; creates the file when missing. Raises run-time errors.
    virtual void AppendToFile(const std::wstring& path, const std::wstring& text) = 0;
    // The most recently modified file that matches; a folder that cannot be listed has none.
    [[nodiscard]] virtual NewestFile GetNewestFileInFolder(const std::wstring& folder,
                                                           const std::wstring& pattern,
                                                           std::uint32_t attributeMask) const = 0;
};

}  // namespace corvane
