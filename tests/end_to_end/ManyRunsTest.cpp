#include <algorithm>
#include <cstdlib>

#include "EndToEndTest.h"
#include "support/windows/BuiltFiles.h"

namespace end_to_end {
namespace {

const Lines runMessages = {versionDetected,
                           popPhase + "requested while inbound call is _ringing_.",
                           popPhase + "searching while incoming call is ringing.",
                           "Found (555)123-4567 in Phone1 of the current record.",
                           popPhase + "processing completed.",
                           historyPhase + "requested at _connection_ of call.",
                           historyPhase + "call start event ignored.",
                           historyPhase + "processing completed.",
                           "Call processing completed in <seconds> seconds."};
const Lines runCommands =
    Joined({startUpCommands,
            {gmapi::Macro("&amp;Phone1"),
             gmapi::StatusMsg("Corvane found (555)123-4567 in Phone1 of the current record.")}});

std::string EventNumber(int number) {
    return "/N:S /T:I /C:5551234567 /I:" + std::to_string(number);
}

// How many runs a test makes: few in the tests of every day, as many as scripts/soak.sh says.
int RunsInARow() {
    constexpr int fewRuns = 12;
    const char* asked = std::getenv("CORVANE_RUNS");
    return asked ? std::atoi(asked) : fewRuns;
}

class ManyRunsTest : public EndToEndTest {
protected:
    // The caller's record is the current one already, so that all runs have the same to do.
    PracticeGoldMine& GoldMineAtTheCaller() {
        PracticeGoldMine& goldMine = GoldMine();
        static_cast<void>(Run(EventNumber(0)));
        return goldMine;
    }
};

TEST_F(ManyRunsTest, OneGoldMineServesOneCallAfterAnotherAndOtherClientsBetween) {
    GoldMineAtTheCaller();
    const int count = RunsInARow();
    for (int number = 0; number < count && !HasFailure(); ++number) {
        SCOPED_TRACE(number);
        const std::string call = EventNumber(number);
        Check(Run(call),
              {.log = RunLog(call, std::to_string(number), runMessages), .commands = runCommands});
        EXPECT_EQ(RunToEnd(BuiltFile(L"tests/bare_client.exe"),
                           L"\"" + Wide(gmapi::Macro("&amp;UserName")) + L"\""),
                  0U);
    }
}

TEST_F(ManyRunsTest, FiftyAtOnceLoseNothing) {
    constexpr int count = 50;
    PracticeGoldMine& goldMine = GoldMineAtTheCaller();
    const size_t journalBegin = goldMine.Journal().size();
    DeleteFileW(logFile().c_str());
    std::vector<ProgramRun> started;
    started.reserve(count);
    for (int number = 0; number < count; ++number)
        started.emplace_back(Wide(programPath), EventNumber(number));
    for (ProgramRun& run : started) {
        run.Finish();
        EXPECT_EQ(run.boxes(), Boxes{});
    }

    std::map<std::string, Lines> logged;
    for (const LogLine& line : ParseLog(LogText()))
        logged[line.identifier].push_back("[" + line.identifier + "]: " + Normalised(line.message));
    for (int number = 0; number < count; ++number) {
        const std::string identifier = std::to_string(number);
        const std::string call = EventNumber(number);
        Lines expected = RunLog(call, identifier, runMessages);
        // Separator and echo bear no identifier.
        for (const std::string& line : {expected[0], expected[1]}) {
            const auto found = std::find(logged[""].begin(), logged[""].end(), line);
            ASSERT_NE(found, logged[""].end()) << line;
            logged[""].erase(found);
        }
        expected.erase(expected.begin(), expected.begin() + 2);
        EXPECT_EQ(logged[identifier], expected);
        logged.erase(identifier);
    }
    EXPECT_EQ(logged, (std::map<std::string, Lines>{{"", {}}})) << "nobody else wrote";

    std::map<std::string, int> received;
    const Lines journal = goldMine.Journal();
    for (size_t entry = journalBegin; entry < journal.size(); ++entry) {
        if (journal[entry].starts_with("> "))
            ++received[journal[entry].substr(2)];
    }
    std::map<std::string, int> sent;
    for (const std::string& command : runCommands)
        sent[command] += count;
    EXPECT_EQ(received, sent);
}

}  // namespace
}  // namespace end_to_end
