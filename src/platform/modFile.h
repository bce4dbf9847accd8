#pragma once

#include <cstdint>
#include <string>

#include "platform/kit/Handles.h"
#include "seams/FileSystem.h"

namespace corvane {

// File and folder helpers; StripAtNull and AddTrailingBackslash stand in util/Text.h.
class modFile final : public FileSystem {
public:
    [[nodiscard]] bool FileExists(const std::wstring& path) const override;
    [[nodiscard]] bool FolderExists(const std::wstring& path) const override;
    bool MakeFolder(const std::wstring& path) override;
    bool CopyToNew(const std::wstring& from, const std::wstring& to) override;
    // In the system code page, one write on a handle that lets other instances append too. Raises
    // 70, 76 and what else the system says; 70 as well for a file that stands elsewhere than its
    // path says, which is looked at once.
    void AppendToFile(const std::wstring& path, const std::wstring& text) override;
    // One pass over the folder by last-write time.
    [[nodiscard]] NewestFile GetNewestFileInFolder(const std::wstring& folder,
                                                   const std::wstring& pattern,
                                                   std::uint32_t attributeMask) const override;

private:
    std::wstring checkedPath_;  // of the last file that was appended to
    UniqueHandle appendMutex_;
};

}  // namespace corvane
