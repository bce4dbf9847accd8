#pragma once

#include <cstdint>
#include <string_view>

namespace corvane {

// Whether a folder entry counts in the search for the newest file: no name that begins with a
// dot, no folder, and at least one attribute of the mask (a merely temporary file has none).
[[nodiscard]] constexpr bool IsCandidate(std::wstring_view nameField, std::uint32_t attributes,
                                         std::uint32_t attributeMask) {
    constexpr std::uint32_t directory = 0x10;
    return !nameField.starts_with(L'.') && (attributes & directory) == 0 &&
           (attributes & attributeMask) != 0;
}

}  // namespace corvane
