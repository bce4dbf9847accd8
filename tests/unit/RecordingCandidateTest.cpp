#include "util/RecordingCandidate.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

#include "TestErrors.h"

namespace corvane::test {
namespace {

constexpr std::uint32_t mask = 167;  // read-only, hidden, system, archive, normal

struct Entry {
    std::wstring name;
    std::uint32_t attributes;
    bool counts;
};

void PrintTo(const Entry& entry, std::ostream* out) {
    *out << std::string(entry.name.begin(), entry.name.end()) << " 0x" << std::hex
         << entry.attributes;
}

class RecordingCandidateTest : public testing::TestWithParam<Entry> {};

TEST_P(RecordingCandidateTest, CountsOrDoesNot) {
    EXPECT_EQ(IsCandidate(GetParam().name, GetParam().attributes, mask), GetParam().counts);
}

INSTANTIATE_TEST_SUITE_P(
    FolderEntries, RecordingCandidateTest,
    testing::Values(Entry{L"call.wav", 0x20, true}, Entry{L"call.wav", 0x80, true},
                    Entry{L"call.wav", 0x01, true}, Entry{L"call.wav", 0x02, true},
                    Entry{L"call.wav", 0x04, true}, Entry{L"call.wav", 0x120, true},
                    Entry{L"call.wav", 0x100, false},   // merely temporary
                    Entry{L"call.wav", 0x1000, false},  // merely offline
                    Entry{L"call.wav", 0, false}, Entry{L"folder", 0x10, false},
                    Entry{L"folder", 0x30, false}, Entry{L".", 0x10, false},
                    Entry{L"..", 0x10, false}, Entry{L".hidden.wav", 0x20, false},
                    Entry{L"a.b.wav", 0x20, true}, Entry{L" .wav", 0x20, true}));

TEST(RecordingCandidateMaskTest, AnotherMaskAsksForOtherAttributes) {
    EXPECT_TRUE(IsCandidate(L"call.wav", 0x100, 0x100));
    EXPECT_FALSE(IsCandidate(L"call.wav", 0x20, 0x100));
    EXPECT_FALSE(IsCandidate(L"folder", 0x10, 0x10));
}

TEST(NewestCandidateTest, TheLatestTimeWinsAndOfEqualOnesTheFirst) {
    NewestCandidate newest;
    newest.Meet(L"a.wav", 5);
    newest.Meet(std::wstring_view(L"b.wav\0junk", 10), 0x100000000);
    newest.Meet(L"c.wav", 0x100000000);
    newest.Meet(L"d.wav", 7);
    EXPECT_EQ(newest.name, L"b.wav");
    EXPECT_EQ(newest.time, 0x100000000U);
    EXPECT_EQ(newest.count, 4);
}

TEST(NewestCandidateTest, AFileWithoutATimeCountsAndIsNotTheNewest) {
    NewestCandidate newest;
    newest.Meet(L"a.wav", 0);
    EXPECT_EQ(newest.name, L"");
    EXPECT_EQ(newest.count, 1);
}

TEST(NewestCandidateTest, MoreFilesThanCanBeCountedAreAnOverflow) {
    NewestCandidate newest;
    newest.count = 2147483646;
    newest.Meet(L"a.wav", 1);
    EXPECT_EQ(ErrorOf([&] { newest.Meet(L"b.wav", 2); }).number, 6);
    EXPECT_EQ(newest.name, L"a.wav");
}

}  // namespace
}  // namespace corvane::test
