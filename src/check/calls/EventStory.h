#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "check/calls/CallEvent.h"
#include "check/calls/LogLine.h"
#include "check/calls/LogMessage.h"

namespace corvane {

// Tells from lines of a run what came of one event.
class EventStory {
public:
    EventStory(std::uint32_t runNumber, LogTime begin, std::wstring_view what);

    // The parameters that 3CX or GoldMine passed, as the log echoes them.
    void ReadParameters(std::wstring_view echo);
    // The message's texts are handed over as text.
    void Tell(LogTime time, const LogMessage& message, const std::wstring& detail);
    // The line may be another run's; the first reason stays.
    void Doubt(std::wstring_view why);

    [[nodiscard]] const std::wstring& identifier() const { return event_.identifier; }
    void setIdentifier(std::wstring identifier) { event_.identifier = std::move(identifier); }
    [[nodiscard]] LogTime end() const { return event_.end; }
    [[nodiscard]] bool completed() const { return completed_; }

    // What became of the event when no more lines come, the run's last one being among them or not;
    // nothing when there was no event.
    [[nodiscard]] std::optional<CallEvent> Finish(bool lastLineSeen) &&;

private:
    void TellFound(LogTime time, const std::wstring& detail);
    void TellTrouble(std::wstring text);
    void TellSlowCommand(const std::wstring& detail);
    void MeasureBox(LogTime time, BoxOfLine box);
    void Step(std::wstring text);
    [[nodiscard]] CallOutcome Outcome() const;
    [[nodiscard]] std::wstring WhyIgnored() const;

    CallEvent event_;
    bool handled_ = false;  // there was an event
    bool completed_ = false;
    bool popSearch_ = false;
    bool popped_ = false;
    bool shownLater_ = false;  // the record comes up behind the line that says that it was found
    bool found_ = false;
    bool notFound_ = false;
    bool dialed_ = false;
    bool trouble_ = false;
    bool dialogAwaited_ = false;
    bool boxFollows_ = false;
    bool mayAsk_ =
        false;  // questions about GoldMine's INI file leave no line when they are answered
    std::wstring popMoment_;
    std::wstring historyMoment_;
};

}  // namespace corvane
