#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

#include "envelope/Command.h"
#include "events/EventRaiser.h"
#include "shared/Journal.h"

namespace practice {

// All that the fault file wants of one command.
struct FaultPlan {
    DWORD delayMilliseconds = 0;
    std::vector<RaisedEvent> raises;
    EventTiming eventTiming;
    bool numericIds = false;
    bool die = false;
    std::optional<Answer> answer;  // given instead of the real one
};

// faults.txt: one fault a line, "<selector> <action> [argument]", "#" begins a comment. Read again
// for each command. README.md lists selectors and actions.
class Faults {
public:
    Faults(std::wstring file, Journal& journal);

    // What to do with this command. Each matching line counts it, which "@N" and "busy" go by; the
    // counts begin again when the file changes.
    FaultPlan For(const Command& command);

private:
    struct Line {
        std::wstring call;    // "*" is every command
        std::wstring detail;  // "" is any
        long only = 0;        // the N of "@N"; 0 when there is none
        std::wstring action;
        std::wstring argument;
        long matches = 0;
    };

    void Reload();
    static std::optional<Line> ReadLine(const std::wstring& text);
    static bool Matches(const Line& line, const Command& command);
    static bool Apply(const Line& line, const Command& command, FaultPlan& plan);

    std::wstring file_;
    Journal& journal_;
    std::string content_;
    std::vector<Line> lines_;
};

}  // namespace practice
