#include "check/report/Zip.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include "support/ZipReader.h"

namespace corvane {
namespace {

using test_support::ZipReader;

LogTime At(const char* stamp) {
    return *LogTimeFromStamp(stamp);
}

TEST(Zip, SumsAreThoseOfTheFormat) {
    EXPECT_EQ(Crc32(""), 0U);
    EXPECT_EQ(Crc32("123456789"), 0xCBF43926U);
    EXPECT_EQ(Crc32("The quick brown fox jumps over the lazy dog"), 0x414FA339U);
    EXPECT_EQ(Crc32("\xff"), 0xFF000000U);
}

TEST(Zip, OneFileIsTheseBytes) {
    Zip zip(At("20261122.052333.000"));
    zip.Add("a", "hi");
    constexpr char bytes[] =
        "PK\3\4\x14\0\0\x08\0\0\xf0\x2a\x76\x5d\xac\x2a\x93\xd8\2\0\0\0\2\0\0\0\1\0\0\0ahi"
        "PK\1\2\x14\0\x14\0\0\x08\0\0\xf0\x2a\x76\x5d\xac\x2a\x93\xd8\2\0\0\0\2\0\0\0\1\0\0\0"
        "\0\0\0\0\0\0\0\0\0\0\0\0\0\0a"
        "PK\5\6\0\0\0\0\1\0\1\0\x2f\0\0\0\x21\0\0\0\0\0";
    EXPECT_EQ(zip.Bytes(), std::string(bytes, sizeof(bytes) - 1));
}

TEST(Zip, FilesComeBackAsTheyWere) {
    Zip zip(At("20240229.235959.999"));
    std::string all;
    for (int i = 0; i < 256; ++i)
        all += static_cast<char>(i);
    zip.Add("empty.txt", "");
    zip.Add("Gr\xc3\xbc\xc3\x9f\x65.txt", all);
    zip.Add("long", std::string(100'000, 'x'));
    EXPECT_EQ(ZipReader::Read(zip.Bytes()),
              (ZipReader::Files{{"empty.txt", ""},
                                {"Gr\xc3\xbc\xc3\x9f\x65.txt", all},
                                {"long", std::string(100'000, 'x')}}));
    EXPECT_TRUE(ZipReader::Read(Zip(At("20240229.235959.999")).Bytes()).empty());
}

#ifndef _WIN32
// Another's reader: Debian's unzip. (It takes no notice of UTF-8 in names of DOS.)
TEST(Zip, UnzipFindsNoFault) {
    Zip zip(At("20261122.052333.000"));
    zip.Add("empty.txt", "");
    zip.Add("text.txt", "text\r\n");
    const std::string file = testing::TempDir() + "corvane-zip-test.zip";
    std::ofstream(file, std::ios::binary) << zip.Bytes();
    EXPECT_EQ(std::system(("unzip -tqq '" + file + "'").c_str()), 0);
    // Times count in steps of two seconds.
    const std::string list = "unzip -Z -T '" + file + "' | grep -c ' 20261122.052332 '";
    EXPECT_EQ(std::system((list + " | grep -qx 2").c_str()), 0);
    std::remove(file.c_str());
}
#endif

}  // namespace
}  // namespace corvane
