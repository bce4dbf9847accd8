// The numbers that the user guide tells of are dialed as it says.

#include <fstream>
#include <string>
#include <vector>

#include "ProgramFixture.h"

namespace corvane::test {
namespace {

// The texts in backquotes of a line.
std::vector<std::wstring> Quotations(const std::string& line) {
    std::vector<std::wstring> found;
    for (std::size_t at = line.find('`'); at != std::string::npos; at = line.find('`', at)) {
        const std::size_t end = line.find('`', at + 1);
        found.emplace_back(line.begin() + std::ptrdiff_t(at) + 1,
                           line.begin() + std::ptrdiff_t(end));
        at = end + 1;
    }
    return found;
}

using UserGuideTest = ProgramTest;

TEST_F(UserGuideTest, NumbersAreDialedAsItsTableSays) {
    around.InstallThreeCX();
    around.RunGoldMine();
    std::ifstream guide(USER_GUIDE);
    std::string line;
    while (std::getline(guide, line) && !line.starts_with("| In GoldMine |")) {
    }
    std::getline(guide, line);  // the rule below the head
    int rows = 0;
    for (; std::getline(guide, line) && line.starts_with("| "); ++rows) {
        SCOPED_TRACE(line);
        const auto quoted = Quotations(line);
        const bool nothing = line.find("| nothing |") != std::string::npos;
        around.processes.started.clear();

        EXPECT_EQ(Make(quoted.at(0)).Run(), RunOutcome::End);

        const auto expected =
            nothing ? std::vector<std::wstring>()
                    : std::vector{L"\"C:\\3CX\\CallTriggerCmd.exe\" -cmd makecall:" + quoted.at(1)};
        EXPECT_EQ(around.processes.started, expected);
    }
    EXPECT_GT(rows, 5);
}

}  // namespace
}  // namespace corvane::test
