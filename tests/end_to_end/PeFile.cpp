#include "PeFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstring>

#include "support/windows/Files.h"

namespace end_to_end {

PeFile::PeFile(const std::wstring& path) : bytes_(test_support::ReadFileText(path).value_or("")) {
    const auto at = [this](size_t offset) { return bytes_.data() + offset; };
    IMAGE_DOS_HEADER start{};
    bytes_.resize(std::max(bytes_.size(), sizeof start + sizeof(IMAGE_NT_HEADERS)));
    std::memcpy(&start, at(0), sizeof start);
    std::memcpy(&headers_, at(static_cast<size_t>(start.e_lfanew)), sizeof headers_);
    EXPECT_EQ(headers_.Signature, DWORD{IMAGE_NT_SIGNATURE});
    EXPECT_EQ(headers_.OptionalHeader.Magic, WORD{IMAGE_NT_OPTIONAL_HDR_MAGIC});
    sections_.resize(headers_.FileHeader.NumberOfSections);
    std::memcpy(sections_.data(), at(static_cast<size_t>(start.e_lfanew) + sizeof headers_),
                sections_.size() * sizeof(IMAGE_SECTION_HEADER));
}

std::map<std::string, std::set<std::string>> PeFile::Imports() const {
    std::map<std::string, std::set<std::string>> imports;
    DWORD address = header().DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    for (;; address += sizeof(IMAGE_IMPORT_DESCRIPTOR)) {
        const auto library = At<IMAGE_IMPORT_DESCRIPTOR>(address);
        if (library.Name == 0)
            return imports;
        std::string name = TextAt(library.Name);
        std::transform(name.begin(), name.end(), name.begin(), [](unsigned char letter) {
            return static_cast<char>(std::tolower(letter));
        });
        std::set<std::string>& functions = imports[name];
        for (DWORD entry = library.OriginalFirstThunk;; entry += sizeof(ULONG_PTR)) {
            const auto function = At<ULONG_PTR>(entry);
            if (function == 0)
                break;
            const bool byNumber = IMAGE_SNAP_BY_ORDINAL(function);
            functions.insert(byNumber ? "#" + std::to_string(IMAGE_ORDINAL(function))
                                      : TextAt(static_cast<DWORD>(function) + sizeof(WORD)));
        }
    }
}

template <class Item>
Item PeFile::At(DWORD address) const {
    Item item{};
    const size_t offset = OffsetOf(address);
    if (offset + sizeof item <= bytes_.size())
        std::memcpy(&item, bytes_.data() + offset, sizeof item);
    return item;
}

std::string PeFile::TextAt(DWORD address) const {
    const size_t offset = std::min(OffsetOf(address), bytes_.size());
    return bytes_.substr(offset, bytes_.find('\0', offset) - offset);
}

size_t PeFile::OffsetOf(DWORD address) const {
    for (const IMAGE_SECTION_HEADER& section : sections_) {
        if (address >= section.VirtualAddress &&
            address < section.VirtualAddress + section.SizeOfRawData) {
            return address - section.VirtualAddress + section.PointerToRawData;
        }
    }
    ADD_FAILURE() << "no section holds the address " << address;
    return bytes_.size();
}

}  // namespace end_to_end
