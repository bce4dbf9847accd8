#include "EndToEndTest.h"

namespace end_to_end {
namespace {

struct Case {
    const char* name;
    std::map<std::string, std::string> options;
    std::string callerId;
    std::string searched;  // what GoldMine is asked for
};

}  // namespace

class CallerIdTest : public EndToEndTest, public testing::WithParamInterface<Case> {};

TEST_P(CallerIdTest, IsSearchedAsConfigured) {
    const Case& each = GetParam();
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
    testing::Values(Case{"TenDigits", {}, "5551234567", "(555)123-4567"},
                    Case{"SevenDigits", {}, "5551234", "()555-1234"},
                    Case{"ExactlyTheMinimum", {}, "123456", "()12-3456"},
                    Case{"Punctuation", {}, "+1(555)123-45.67", "(555)123-4567"},
                    Case{"LeadingOneOfElevenDigits", {}, "15551234567", "(555)123-4567"},
                    Case{"LeadingOneIsKept",
                         {{"chkCallerIDIgnoreLeading1", "0"}},
                         "15551234567",
                         "(1555)123-4567"},
                    Case{"LeadingOneOfTenDigitsStays", {}, "1555123456", "(155)512-3456"},
                    Case{"TwelveDigits", {}, "442079460000", "(44207)946-0000"},
                    Case{"LeadingZerosAreLost", {}, "0005551234567", "(555)123-4567"},
                    Case{"NoFormat", {{"chkFormatCallerID", "0"}}, "5551234567", "5551234567"},
                    Case{"AnotherFormat",
                         {{"txtCallerIDFormat", "###-###-####"}},
                         "5551234567",
                         "555-123-4567"},
                    Case{"ShortOnesToo", {{"chkIgnoreShortCallerID", "0"}}, "12", "()-12"},
                    Case{"AnotherMinimum", {{"txtCallerIDMinLength", "3"}}, "123", "()-123"}),
    NameOf);

}  // namespace end_to_end
