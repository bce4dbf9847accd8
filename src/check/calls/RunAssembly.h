#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "check/calls/CallEvent.h"
#include "check/calls/EventStory.h"
#include "check/calls/LogLine.h"
#include "check/calls/LogMessage.h"

namespace corvane {

class LogFiles;

// Puts the lines of runs that overlap back into runs. A line bears a run number and a call
// identifier, but no user: each user has numbers of his own, so lines of two users' runs can look
// alike, and are marked as uncertain then.
class RunAssembly {
public:
    using EventSink = std::function<void(CallEvent)>;
    RunAssembly(const LogFiles& files, EventSink sink) : files_(files), sink_(std::move(sink)) {}

    void Take(const LogLine& line, const LogMessage& message);
    // Nothing comes behind the last line.
    void Finish();

private:
    struct Run {
        EventStory story;
        std::string identifier;  // as it stands in the lines; empty until one bore it
        bool started = false;    // its parameters were told
        bool whole = true;       // from its first line on
    };
    using Runs = std::vector<Run>;

    [[nodiscard]] bool Bears(const Run& run, std::string_view identifier) const;
    Run& RunOf(Runs& sameNumber, const LogLine& line, const LogMessage& message);
    void Tell(Run& run, const LogLine& line, const LogMessage& message);
    void Emit(Run run, bool lastLineSeen);
    // Forgets runs that no line came of for long, and if they are too many, more of them.
    void Sweep(LogTime now);
    void EndRunsBefore(LogTime time);

    const LogFiles& files_;
    EventSink sink_;
    std::unordered_map<std::uint32_t, Runs> open_;
    std::size_t openCount_ = 0;
    LogTime lastSweep_;
};

}  // namespace corvane
