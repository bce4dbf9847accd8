#pragma once

#include <windows.h>

#include <map>
#include <set>
#include <string>
#include <vector>

namespace end_to_end {

// A program file as it stands on disk, of the architecture that the tests are built for.
class PeFile {
public:
    explicit PeFile(const std::wstring& path);

    const IMAGE_OPTIONAL_HEADER& header() const { return headers_.OptionalHeader; }
    WORD characteristics() const { return headers_.FileHeader.Characteristics; }
    const std::vector<IMAGE_SECTION_HEADER>& sections() const { return sections_; }
    // Bytes of a part of the image; empty when the file has none of this kind.
    DWORD sizeOf(int directory) const { return header().DataDirectory[directory].Size; }
    // The functions that Windows binds before the program runs, by DLL in small letters.
    std::map<std::string, std::set<std::string>> Imports() const;

private:
    // Fails, and answers zeros, for an address that no section of the file holds.
    template <class Item>
    Item At(DWORD address) const;
    std::string TextAt(DWORD address) const;
    size_t OffsetOf(DWORD address) const;

    std::string bytes_;
    IMAGE_NT_HEADERS headers_{};
    std::vector<IMAGE_SECTION_HEADER> sections_;
};

}  // namespace end_to_end
