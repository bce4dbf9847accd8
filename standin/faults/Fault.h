#pragma once

#include <windows.h>

#include <limits>
#include <optional>
#include <string>
#include <variant>

#include "envelope/Command.h"
#include "events/EventRaiser.h"

namespace practice {

struct Delay {
    DWORD milliseconds;
};

struct NumericIds {};

struct Die {};

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
using FaultAction =
    std::variant<Delay, RaisedEvent, EventTiming, NumericIds, Die, Status, Answer, Busy>;

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
