#include "EndToEndTest.h"

namespace end_to_end {
namespace {

struct CallerIdCase {
    const char* name;
    std::map<std::string, std::string> options;
    std::string callerId;
    std::string searched;  // what GoldMine is asked for
};

class CallerIdTest : public EndToEndTest, public testing::WithParamInterface<CallerIdCase> {};

TEST_P(CallerIdTest, IsSearchedAsConfigured) {
    const CallerIdCase& each = GetParam();
    GoldMine("/NoRecord").SetFaults("CallerID status 0\n");
    SetAll(each.options);

    const Outcome run = Run("/N:S /C:" + each.callerId + " /T:I /I:1");

    EXPECT_EQ(run.commands,
              Joined({startUpCommands,
                      {gmapi::Macro("&amp;Phone1"), gmapi::CallerID(each.searched, "1", "1"),
                       gmapi::StatusMsg("Corvane could not find a contact matching CallerID " +
                                        each.searched + ". Further call processing skipped.")}}));
    EXPECT_EQ(run.boxes, Boxes{});
}

INSTANTIATE_TEST_SUITE_P(
    CallerIds, CallerIdTest,
    testing::Values(
        CallerIdCase{"TenDigits", {}, "5551234567", "(555)123-4567"},
        CallerIdCase{"SevenDigits", {}, "5551234", "()555-1234"},
        CallerIdCase{"ExactlyTheMinimum", {}, "123456", "()12-3456"},
        CallerIdCase{"Punctuation", {}, "+1(555)123-45.67", "(555)123-4567"},
        CallerIdCase{"LeadingOneOfElevenDigits", {}, "15551234567", "(555)123-4567"},
        CallerIdCase{"LeadingOneIsKept",
                     {{"chkCallerIDIgnoreLeading1", "0"}},
                     "15551234567",
                     "(1555)123-4567"},
        CallerIdCase{"LeadingOneOfTenDigitsStays", {}, "1555123456", "(155)512-3456"},
        CallerIdCase{"TwelveDigits", {}, "442079460000", "(44207)946-0000"},
        CallerIdCase{"LeadingZerosAreLost", {}, "0005551234567", "(555)123-4567"},
        CallerIdCase{"NoFormat", {{"chkFormatCallerID", "0"}}, "5551234567", "5551234567"},
        CallerIdCase{
            "AnotherFormat", {{"txtCallerIDFormat", "###-###-####"}}, "5551234567", "555-123-4567"},
        CallerIdCase{"ShortOnesToo", {{"chkIgnoreShortCallerID", "0"}}, "12", "()-12"},
        CallerIdCase{"AnotherMinimum", {{"txtCallerIDMinLength", "3"}}, "123", "()-123"}),
    NameOf);

}  // namespace
}  // namespace end_to_end
