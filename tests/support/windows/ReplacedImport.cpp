#include "support/windows/ReplacedImport.h"

#include <gtest/gtest.h>

#include <cstring>

namespace test_support {

namespace {

// The imports by name stand in two lists: the names, and the addresses that are called.
ULONG_PTR* PlaceOfImport(const char* name) {
    auto* const image = reinterpret_cast<BYTE*>(GetModuleHandleW(nullptr));
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(image);
    const auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(image + dos->e_lfanew);
    const auto& directory =
        headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    const auto* library = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(image + directory);
    for (; library->Name != 0; ++library) {
        const auto* entry = reinterpret_cast<const ULONG_PTR*>(image + library->OriginalFirstThunk);
        auto* address = reinterpret_cast<ULONG_PTR*>(image + library->FirstThunk);
        for (; *entry != 0; ++entry, ++address) {
            const auto* import = reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(image + *entry);
            if (!IMAGE_SNAP_BY_ORDINAL(*entry) && std::strcmp(import->Name, name) == 0)
                return address;
        }
    }
    return nullptr;
}

void Write(ULONG_PTR* place, ULONG_PTR address) {
    DWORD before = 0;
    VirtualProtect(place, sizeof(*place), PAGE_READWRITE, &before);
    *place = address;
}

}  // namespace

ReplacedImport::ReplacedImport(const char* name, ULONG_PTR replacement)
    : place_(PlaceOfImport(name)) {
    EXPECT_NE(place_, nullptr) << name;
    if (!place_)
        return;
    former_ = *place_;
    Write(place_, replacement);
}

ReplacedImport::~ReplacedImport() {
    if (place_)
        Write(place_, former_);
}

}  // namespace test_support
