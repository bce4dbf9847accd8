#include "check/report/Masking.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

TEST(Masking, ANumberKeepsItsFormAndItsLastDigits) {
    Masking masking;
    EXPECT_EQ(masking.Number(L"5551234567"), L"########67");
    EXPECT_EQ(masking.Number(L"(555)123-4567"), L"(###)###-##67");
    EXPECT_EQ(masking.Number(L"+1 555.123/4567"), L"+# ###.###/##67");
    EXPECT_EQ(masking.Number(L"555-1234 x12"), L"###-##34 x##");
    EXPECT_EQ(masking.Number(L"*21#"), L"*###");
    EXPECT_EQ(masking.Number(L""), L"");
}

TEST(Masking, AShortNumberShowsNothing) {
    Masking masking;
    EXPECT_EQ(masking.Number(L"123456"), L"####56");
    EXPECT_EQ(masking.Number(L"12345"), L"#####");
    EXPECT_EQ(masking.Number(L"7"), L"#");
}

TEST(Masking, NumbersThatEndAlikeCanBeToldApart) {
    Masking masking;
    EXPECT_EQ(masking.Number(L"5551234567"), L"########67");
    EXPECT_EQ(masking.Number(L"5559999967"), L"########67~2");
    EXPECT_EQ(masking.Number(L"5558888867"), L"########67~3");
    EXPECT_EQ(masking.Number(L"(555)999-9967"), L"(###)###-##67~2") << "it is the same";
    EXPECT_EQ(masking.Number(L"+1 555 123 4567"), L"+# ### ### ##67");
    EXPECT_EQ(masking.Number(L"5551234568"), L"########68");
}

TEST(Masking, NamesAmongNumbersAreMaskedInAnyScript) {
    Masking masking;
    EXPECT_EQ(masking.Number(L"Ann Smith 5551234567"), L"name-1 name-2 ########67");
    EXPECT_EQ(masking.Number(L"smith; \x4e2d\x6587\t\xdf"), L"name-2; name-3");
    EXPECT_EQ(masking.Number(L"\x0661\x0662"), L"name-4") << "digits of other scripts";
}

TEST(Masking, CallIdentifiersStay) {
    Masking masking;
    EXPECT_EQ(masking.CallIdentifier(L"00042"), L"00042");
    EXPECT_EQ(masking.CallIdentifier(L""), L"");
    EXPECT_EQ(masking.CallIdentifier(L"5551234"), L"#####34") << "may be a number";
    EXPECT_EQ(masking.CallIdentifier(L"Ann"), L"name-1");
}

TEST(Masking, OfAPathStaysWhatIsTheSameEverywhere) {
    Masking masking;
    EXPECT_EQ(masking.Path(L"C:\\Program Files (x86)\\GoldMine\\gmw.exe"),
              L"C:\\Program Files (x86)\\GoldMine\\gmw.exe");
    EXPECT_EQ(masking.Path(L"C:\\Users\\Ann\\AppData\\Local\\ANN.INI"),
              L"C:\\Users\\name-1\\AppData\\Local\\name-1.INI");
    EXPECT_EQ(masking.Path(L"\\\\ANNSERVER\\Share\\2026"), L"\\\\name-2\\name-3\\####");
    EXPECT_EQ(masking.Path(L"\"C:\\Ann Lee\\x.exe\" -cmd"), L"\"C:\\name-4\\name-5.exe\"name-6");
    EXPECT_EQ(masking.Path(L"Ann.Smith"), L"name-7") << "an ending may be a name";
    EXPECT_EQ(masking.Path(L""), L"");
}

TEST(Masking, ARecordingKeepsACallIdentifierThatIsKnown) {
    Masking masking;
    EXPECT_EQ(masking.Path(L"5551234567 (01632).wav"), L"########## (###32).wav")
        << "a part of a number stands in brackets, too";
    static_cast<void>(masking.CallIdentifier(L"00042"));
    EXPECT_EQ(masking.Path(L"C:\\Recordings\\[Ann]_5551234567_(00042).wav"),
              L"C:\\Recordings\\[name-1]_########67_(00042).wav");
}

}  // namespace
}  // namespace corvane
