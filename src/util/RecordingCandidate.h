#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include "util/RuntimeError.h"
#include "util/Text.h"

namespace corvane {

// Whether a folder entry counts in the search for the newest file: no name that begins with a
// dot, no folder, and at least one attribute of the mask (a merely temporary file has none).
[[nodiscard]] constexpr bool IsCandidate(std::wstring_view nameField, std::uint32_t attributes,
                                         std::uint32_t attributeMask) {
    constexpr std::uint32_t directory = 0x10;
    return !nameField.starts_with(L'.') && (attributes & directory) == 0 &&
           (attributes & attributeMask) != 0;
}

// The newest of the candidates met so far, and how many there were.
struct NewestCandidate {
    // The time counts intervals of 100 nanoseconds since 1601, UTC. Of equal times the first one
    // met stays. Raises an overflow where there are more than can be counted.
    void Meet(std::wstring_view nameField, std::uint64_t lastWriteTime) {
        if (count == std::numeric_limits<std::int32_t>::max())
            throw MakeRuntimeError(ErrorNumber::Overflow);
        ++count;
        if (lastWriteTime > time) {
            time = lastWriteTime;
            name = StripAtNull(nameField);
        }
    }

    std::wstring name;  // empty until a candidate has a time at all
    std::uint64_t time = 0;
    std::int32_t count = 0;
};

}  // namespace corvane
