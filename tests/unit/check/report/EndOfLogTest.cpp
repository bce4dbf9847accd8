#include "check/report/EndOfLog.h"

#include <gtest/gtest.h>

#include "check/report/Masking.h"
#include "fakes/FakeLogFiles.h"

namespace corvane {
namespace {

std::string EndOf(const std::string& log, std::uint64_t most, bool masked = true) {
    FakeLogFiles files;
    files.files[L"the.log"] = log;
    Masking masking;
    EndOfLog end(files, L"the.log", most, masked ? &masking : nullptr);
    std::string all;
    char buffer[7];
    while (const std::size_t count = end.Read(buffer))
        all.append(buffer, count);
    return all;
}

const std::string found =
    "17\t20240311.142305.087\t[00042]:\tFound 5551234567 in a primary contact record.\r\n";
const std::string maskedFound =
    "17\t20240311.142305.087\t[00042]:\tFound ########67 in a primary contact record.\r\n";

TEST(EndOfLog, MasksLinesByTheirForms) {
    EXPECT_EQ(EndOf(found + found, 1000), maskedFound + maskedFound);
    EXPECT_EQ(EndOf("17\t20240311.142305.087\t[5551234567]:\tSettings saved.\r\n", 1000),
              "17\t20240311.142305.087\t[########67]:\tSettings saved.\r\n");
    EXPECT_EQ(EndOf("", 1000), "");
}

TEST(EndOfLog, BeginsWithAWholeLine) {
    EXPECT_EQ(EndOf(found + found, found.size() + 3), maskedFound);
    EXPECT_EQ(EndOf(found + found, 10), "");
}

TEST(EndOfLog, HidesLinesThatAreNotTheProgramsAndCutOnes) {
    EXPECT_EQ(EndOf("Ann 5551234567\r\n\r\n" + found, 1000),
              "(hidden: 14 characters)\r\n\r\n" + maskedFound);
    const std::string behind = "0" + maskedFound.substr(2);
    EXPECT_EQ(EndOf("17\t20240311.142305.087\t[]:\tFound 55512" + found, 1000),
              "17\t20240311.142305.087\t[]:\t(hidden: 6 characters)" + behind)
        << "where the number ends cannot be told";
    EXPECT_EQ(EndOf("Ann" + found, 1000), "(hidden: 3 characters)" + behind);
}

TEST(EndOfLog, UnmaskedItIsAsItStands) {
    EXPECT_EQ(EndOf(found + "Ann\r\n\xdf", 1000, false), found + "Ann\r\n\xdf\r\n");
}

}  // namespace
}  // namespace corvane
