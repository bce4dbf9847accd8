#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

#include "faults/Fault.h"
#include "shared/Journal.h"

namespace practice {

// All that the fault file wants of one command.
struct FaultPlan {
    DWORD delayMilliseconds = 0;
    std::vector<RaisedEvent> raises;
    EventTiming eventTiming;
    bool numericIds = false;
    std::optional<Die> death;
    std::optional<Answer> answer;  // given instead of the real one
    std::wstring replyCall;        // the real one's name of the call, "" to leave it
    std::size_t padding = 0;       // letters behind the real one's value

    // Makes of the real reply what is answered.
    void Alter(std::wstring& reply) const;
};

// faults.txt: one fault a line, "#" begins a comment. Looked at for each command, and understood
// once when it has changed.
class Faults {
public:
    Faults(std::wstring file, Journal& journal);

    // What to do with this command. Each fault counts the commands that match it, which "@N" and
    // "busy" go by; the counts begin again when the file changes.
    FaultPlan For(const Command& command);

private:
    struct Counted {
        Fault fault;
        long long matches = 0;
    };

    void Reload();

    std::wstring file_;
    Journal& journal_;
    std::string content_;
    std::vector<Counted> faults_;
};

}  // namespace practice
