#pragma once

#include <windows.h>

#include <cstddef>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "envelope/Command.h"
#include "events/EventRaiser.h"

namespace practice {

struct Delay {
    DWORD milliseconds;
};

struct NumericIds {};

// Before it has carried the command out, or behind that and without an answer.
struct Die {
    bool done;
};

// The real reply, under this name of the call.
struct RenamedReply {
    std::wstring call;
};

// So many letters behind the value of the real reply.
struct Padding {
    std::size_t letters;
};

// A status code and its text, whatever the call.
struct Status {
    wchar_t digit;
    std::wstring text;
};

struct Busy {
    long tries;
};

// What a fault does. A RaisedEvent is raised, an EventTiming is that of the dialog's event, and an
// Answer is given as it is.
using FaultAction = std::variant<Delay, RaisedEvent, EventTiming, NumericIds, Die, RenamedReply,
                                 Padding, Status, Answer, Busy>;

// A client that wants to hear events, as a call in faults.txt. It is no command.
inline constexpr std::wstring_view adviseCall = L"Advise";

// A line of faults.txt, understood.
struct Fault {
    std::wstring call;    // "*" is every command
    std::wstring detail;  // "" is any
    // The matching commands that it hits, counted from 1.
    long long first = 1;
    long long last = std::numeric_limits<long long>::max();
    FaultAction action;

    [[nodiscard]] bool Matches(const Command& command) const;
};

// "<selector> <action> [argument]"; nothing when that makes no sense. README.md lists selectors and
// actions.
std::optional<Fault> ReadFault(const std::wstring& line);

}  // namespace practice
