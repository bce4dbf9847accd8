#pragma once

#include <cstdint>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>

namespace test_support {

// The files of an archive that only stores them, by their names. Raises when anything in it is not
// as the format has it; read by the directory at its end, as archivers do.
class ZipReader {
public:
    using Files = std::map<std::string, std::string>;

    static Files Read(std::string_view bytes) {
        const ZipReader zip(bytes);
        constexpr std::size_t endSize = 22;
        Expect(bytes.size() >= endSize, "too short");
        const std::size_t end = bytes.size() - endSize;
        Expect(bytes.substr(end, 4) == "PK\5\6", "no end of the directory");
        const auto count = zip.Number(end + 10, 2);
        std::size_t at = zip.Number(end + 16, 4);
        Expect(at + zip.Number(end + 12, 4) == end, "the directory's size");
        Files files;
        std::size_t place = 0;
        for (std::uint32_t i = 0; i < count; ++i) {
            constexpr std::size_t entrySize = 46;
            constexpr std::size_t headSize = 30;
            Expect(bytes.substr(at, 4) == "PK\1\2", "an entry");
            const std::size_t nameSize = zip.Number(at + 28, 2);
            const std::string_view name = bytes.substr(at + entrySize, nameSize);
            Expect(zip.Number(at + 42, 4) == place, "an entry's place");
            Expect(bytes.substr(place, 4) == "PK\3\4", "a file's head");
            Expect(bytes.substr(place + 4, 26) == bytes.substr(at + 6, 26), "head and entry");
            Expect(bytes.substr(place + headSize, nameSize) == name, "a file's name");
            Expect(zip.Number(at + 10, 2) == 0, "it is stored");
            const std::size_t size = zip.Number(at + 24, 4);
            const std::string_view file = bytes.substr(place + headSize + nameSize, size);
            Expect(file.size() == size && zip.Number(at + 20, 4) == size, "a file's size");
            Expect(Sum(file) == zip.Number(at + 16, 4), "a file's sum");
            Expect(files.emplace(name, file).second, "a name comes twice");
            at += entrySize + nameSize;
            place += headSize + nameSize + size;
        }
        Expect(at == end && place == zip.Number(end + 16, 4), "nothing in between");
        return files;
    }

private:
    explicit ZipReader(std::string_view bytes) : bytes_(bytes) {}

    static void Expect(bool holds, const char* what) {
        if (!holds)
            throw std::runtime_error(what);
    }
    [[nodiscard]] std::uint32_t Number(std::size_t at, std::size_t size) const {
        Expect(at + size <= bytes_.size(), "a number behind the end");
        std::uint32_t number = 0;
        for (std::size_t i = size; i > 0; --i)
            number = number << 8U | static_cast<unsigned char>(bytes_[at + i - 1]);
        return number;
    }
    // CRC-32, bit by bit.
    static std::uint32_t Sum(std::string_view bytes) {
        std::uint32_t sum = 0xFFFFFFFF;
        for (const char each : bytes) {
            sum ^= static_cast<unsigned char>(each);
            for (int bit = 0; bit < 8; ++bit)
                sum = sum >> 1U ^ ((sum & 1U) != 0 ? 0xEDB88320U : 0U);
        }
        return ~sum;
    }

    std::string_view bytes_;
};

}  // namespace test_support
