#pragma once

#include <string>

#include "EndToEndTest.h"

namespace end_to_end {

// A check waits for a hanging GoldMine for eight seconds; a busy machine stretches them, so that a
// test asks only that it does not wait for the answer. To kill a GoldMine that hangs in a call
// would be quicker, but then Wine lets nobody connect to the next one.
inline constexpr char hangs[] = " delay 20000\n";
inline constexpr DWORD beforeItAnswers = 18'000;  // milliseconds

// What the checking program said, and how it ended.
struct Checked {
    std::string text;  // lines end in "\n"
    DWORD exitCode = 0;
    DWORD milliseconds = 0;
};

// The machine of the other tests with the checking program beside the program.
class CheckTest : public EndToEndTest {
protected:
    static void SetUpTestSuite();

    static Checked Check(const std::string& commandLine);
    // All that a check could have changed: keys, files and what GoldMine was sent beside macros and
    // queries.
    Lines State() const;
};

}  // namespace end_to_end
