#pragma once

#include <functional>
#include <map>
#include <string>
#include <utility>

#include "check/calls/Call.h"

namespace corvane {

// Puts events into calls. 3CX's identifiers come again after a while, so time tells calls apart
// too.
class CallAssembly {
public:
    using CallSink = std::function<void(Call)>;
    explicit CallAssembly(CallSink sink) : sink_(std::move(sink)) {}

    void Take(CallEvent event);
    // No events come behind the last one.
    void Finish();

private:
    using Key = std::pair<std::wstring, std::wstring>;  // identifier and number
    using Calls = std::map<Key, Call>;

    [[nodiscard]] Calls::iterator CallOf(const CallEvent& event);
    void Emit(Call call);
    // Lets go of calls that nothing was heard of for long, and if they are too many, more of them.
    void Sweep(LogTime now);
    void EndCallsBefore(LogTime time);

    CallSink sink_;
    Calls open_;
    LogTime lastSweep_;
};

}  // namespace corvane
