#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace corvane::test {

// The bytes of one input as UTF-8 text; a byte that is no part of a character stands for itself,
// so any bytes make a text.
inline std::wstring WideText(std::string_view bytes) {
    std::wstring text;
    for (std::size_t at = 0; at < bytes.size();) {
        const auto byteAt = [&](std::size_t index) {
            return index < bytes.size() ? static_cast<unsigned char>(bytes[index]) : 0U;
        };
        const std::uint32_t lead = byteAt(at);
        std::size_t length = lead < 0xC0 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        std::uint32_t code = length == 1 ? lead : lead & (0xFFU >> (length + 1));
        for (std::size_t each = 1; each < length; ++each) {
            if ((byteAt(at + each) & 0xC0) != 0x80)
                length = 1;
            else
                code = code << 6 | (byteAt(at + each) & 0x3F);
        }
        text += static_cast<wchar_t>(length == 1 || code > 0x10FFFF ? lead : code);
        at += code > 0x10FFFF ? 1 : length;
    }
    return text;
}

// Takes an input apart: short parts are lines of their own at its begin.
class Input {
public:
    Input(const std::uint8_t* data, std::size_t size)
        : bytes_(reinterpret_cast<const char*>(data), size) {}

    [[nodiscard]] bool empty() const { return bytes_.empty(); }
    std::wstring Line() {
        const std::size_t end = bytes_.find('\n');
        const std::wstring line = WideText(bytes_.substr(0, end));
        bytes_.remove_prefix(end == std::string_view::npos ? bytes_.size() : end + 1);
        return line;
    }
    std::wstring Rest() { return WideText(bytes_); }

private:
    std::string_view bytes_;
};

}  // namespace corvane::test
