#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "check/calls/LogTime.h"

namespace corvane {

// An archive whose files are stored as they are: texts of this size need no more.
class Zip {
public:
    // All its files bear this time.
    explicit Zip(LogTime time);

    // The name in UTF-8.
    void Add(std::string_view name, std::string_view bytes);
    // All of it; nothing is added behind.
    [[nodiscard]] std::string Bytes() const;

private:
    std::uint32_t time_;  // DOS date and time
    std::string files_;
    std::string directory_;
    std::uint16_t count_ = 0;
};

[[nodiscard]] std::uint32_t Crc32(std::string_view bytes);

}  // namespace corvane
