#pragma once

#include <string>

#include "EndToEndTest.h"

namespace end_to_end {

// Of the minute that GoldMine hangs in a test, a check waits at most ten seconds for; a busy
// machine stretches them, so that a test asks for half of the minute only.
inline constexpr char hangsAMinute[] = " delay 60000\n";
inline constexpr DWORD halfAMinute = 30'000;  // milliseconds

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
