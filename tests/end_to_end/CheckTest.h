#pragma once

#include <string>

#include "EndToEndTest.h"

namespace end_to_end {

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
