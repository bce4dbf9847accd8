#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "seams/FileSystem.h"

// Stateless file and folder helpers; StripAtNull and AddTrailingBackslash stand in util/Text.h.
namespace corvane {

[[nodiscard]] bool FileExists(const std::wstring& path);
[[nodiscard]] bool FolderExists(const std::wstring& path);

// Appends the text in the system code page, one write on a handle that lets other instances append
// too. Raises run-time errors: 70, 76 and what else the system says.
void AppendToFile(const std::wstring& path, std::wstring_view text);

// One pass over the folder by last-write time. A folder that cannot be read has no file.
[[nodiscard]] NewestFile GetNewestFileInFolder(const std::wstring& folder,
                                               const std::wstring& pattern,
                                               std::uint32_t attributeMask);

// The helpers as the seam that the rest of the program sees.
class modFile final : public FileSystem {
public:
    [[nodiscard]] bool FileExists(const std::wstring& path) const override;
    [[nodiscard]] bool FolderExists(const std::wstring& path) const override;
    bool MakeFolder(const std::wstring& path) override;
    void AppendToFile(const std::wstring& path, const std::wstring& text) override;
    [[nodiscard]] NewestFile GetNewestFileInFolder(const std::wstring& folder,
                                                   const std::wstring& pattern,
                                                   std::uint32_t attributeMask) const override;
};

}  // namespace corvane
