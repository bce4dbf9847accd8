#include "check/report/Zip.h"

#include <array>

namespace corvane {

namespace {

void Put16(std::string& bytes, std::uint32_t number) {
    bytes += static_cast<char>(number & 0xFFU);
    bytes += static_cast<char>((number >> 8U) & 0xFFU);
}

void Put32(std::string& bytes, std::uint32_t number) {
    Put16(bytes, number & 0xFFFFU);
    Put16(bytes, number >> 16U);
}

// The date above, in years since 1980, and the time below, in steps of two seconds.
std::uint32_t DosTime(LogTime time) {
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss clock(std::chrono::floor<std::chrono::seconds>(time - day));
    const auto year = static_cast<std::uint32_t>(static_cast<int>(date.year()) - 1980);
    const auto part = [](auto number) { return static_cast<std::uint32_t>(number); };
    return year << 25U | static_cast<unsigned>(date.month()) << 21U |
           static_cast<unsigned>(date.day()) << 16U | part(clock.hours().count()) << 11U |
           part(clock.minutes().count()) << 5U | part(clock.seconds().count()) / 2;
}

constexpr std::uint32_t neededVersion = 20;

}  // namespace

std::uint32_t Crc32(std::string_view bytes) {
    static constexpr auto table = [] {
        constexpr std::uint32_t polynomial = 0xEDB88320;
        std::array<std::uint32_t, 256> made{};
        for (std::uint32_t i = 0; i < made.size(); ++i) {
            std::uint32_t sum = i;
            for (int bit = 0; bit < 8; ++bit)
                sum = (sum & 1U) != 0 ? sum >> 1U ^ polynomial : sum >> 1U;
            made[i] = sum;
        }
        return made;
    }();
    std::uint32_t sum = 0xFFFFFFFF;
    for (const char each : bytes)
        sum = sum >> 8U ^ table[(sum ^ static_cast<unsigned char>(each)) & 0xFFU];
    return ~sum;
}

Zip::Zip(LogTime time) : time_(DosTime(time)) {}

void Zip::Add(std::string_view name, std::string_view bytes) {
    constexpr std::uint32_t namesAreUtf8 = 0x800;
    constexpr std::uint32_t stored = 0;
    std::string both;  // what file and directory say alike
    Put16(both, neededVersion);
    Put16(both, namesAreUtf8);
    Put16(both, stored);
    Put32(both, time_);
    Put32(both, Crc32(bytes));
    Put32(both, static_cast<std::uint32_t>(bytes.size()));
    Put32(both, static_cast<std::uint32_t>(bytes.size()));
    Put16(both, static_cast<std::uint32_t>(name.size()));
    Put16(both, 0);  // nothing extra

    directory_ += "PK\1\2";
    Put16(directory_, neededVersion);
    directory_ += both;
    directory_.append(10, '\0');  // no comment, first disk, no attributes
    Put32(directory_, static_cast<std::uint32_t>(files_.size()));
    directory_ += name;
    files_.append("PK\3\4").append(both).append(name).append(bytes);
    ++count_;
}

std::string Zip::Bytes() const {
    std::string bytes = files_ + directory_ + "PK\5\6";
    Put32(bytes, 0);  // the only disk
    Put16(bytes, count_);
    Put16(bytes, count_);
    Put32(bytes, static_cast<std::uint32_t>(directory_.size()));
    Put32(bytes, static_cast<std::uint32_t>(files_.size()));
    Put16(bytes, 0);  // no comment
    return bytes;
}

}  // namespace corvane
