#include "check/calls/RunAssembly.h"

#include <algorithm>
#include <utility>

#include "check/calls/LogFiles.h"
#include "util/Text.h"

namespace corvane {

namespace {

// A box may stand overnight.
constexpr milliseconds longestSilence = std::chrono::hours(12);
constexpr milliseconds betweenRunSweeps = std::chrono::hours(1);
constexpr std::size_t mostOpenRuns = 4096;

constexpr std::wstring_view cutOff = L"its first lines are missing";

}  // namespace

void RunAssembly::Take(const LogLine& line, const LogMessage& message) {
    if (line.time - lastSweep_ >= betweenRunSweeps || line.time < lastSweep_ ||
        openCount_ >= mostOpenRuns) {
        Sweep(line.time);
    }
    Runs& sameNumber = open_[line.runNumber];
    Run& run = RunOf(sameNumber, line, message);
    Tell(run, line, message);
    if (message.saying != Saying::ended)
        return;
    Emit(std::move(run), true);
    sameNumber.erase(sameNumber.begin() + (&run - sameNumber.data()));
    if (sameNumber.empty())
        open_.erase(line.runNumber);
}

bool RunAssembly::Bears(const Run& run, std::string_view identifier) const {
    if (identifier.empty() || !run.identifier.empty())
        return identifier == run.identifier;
    return run.started && files_.TextFromLog(identifier) == run.story.identifier();
}

RunAssembly::Run& RunAssembly::RunOf(Runs& sameNumber, const LogLine& line,
                                     const LogMessage& message) {
    const auto fits = [&](const Run& run) {
        const bool startsNow =
            message.saying == Saying::started || message.saying == Saying::startedByHand;
        return startsNow ? !run.started : Bears(run, line.identifier);
    };
    if (message.saying != Saying::separator) {
        const auto first = std::ranges::find_if(sameNumber, fits);
        if (first != sameNumber.end()) {
            if (std::find_if(first + 1, sameNumber.end(), fits) != sameNumber.end()) {
                for (Run& run : sameNumber) {
                    if (fits(run))
                        run.story.Doubt(L"another run had the same number at the same time");
                }
            }
            return *first;
        }
    }
    Run run{EventStory(line.runNumber, line.time, L"start"), {}};
    if (message.saying != Saying::separator && message.saying != Saying::started &&
        message.saying != Saying::startedByHand) {
        run.story.Doubt(cutOff);
        run.story.setIdentifier(files_.TextFromLog(line.identifier));
        run.started = true;
        run.whole = false;
    }
    ++openCount_;
    return sameNumber.emplace_back(std::move(run));
}

void RunAssembly::Tell(Run& run, const LogLine& line, const LogMessage& message) {
    if (run.identifier.empty())
        run.identifier = line.identifier;
    const auto detail = files_.TextFromLog(message.detail);
    if (message.saying == Saying::started) {
        run.started = true;
        run.story.ReadParameters(detail);
    } else if (message.saying == Saying::startedByHand) {
        run.started = true;
    } else if (run.story.completed() &&
               (message.saying == Saying::popMoment || message.saying == Saying::historyMoment ||
                message.saying == Saying::dialed)) {
        // In the window, one call can be processed after another.
        EventStory next(line.runNumber, line.time, L"by hand");
        next.setIdentifier(run.story.identifier());
        if (auto event = std::exchange(run.story, std::move(next)).Finish(true))
            sink_(std::move(*event));
    }
    run.story.Tell(line.time, message, detail);
}

void RunAssembly::Emit(Run run, bool lastLineSeen) {
    --openCount_;
    if (auto event = std::move(run.story).Finish(lastLineSeen || !run.whole))
        sink_(std::move(*event));
}

void RunAssembly::Sweep(LogTime now) {
    lastSweep_ = now;
    EndRunsBefore(now - longestSilence);
    if (openCount_ < mostOpenRuns)
        return;
    std::vector<LogTime> times;
    for (const auto& [number, runs] : open_) {
        for (const Run& run : runs)
            times.push_back(run.story.end());
    }
    const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
    std::ranges::nth_element(times, middle);
    EndRunsBefore(*middle + milliseconds(1));
}

void RunAssembly::EndRunsBefore(LogTime time) {
    for (auto sameNumber = open_.begin(); sameNumber != open_.end();) {
        Runs& runs = sameNumber->second;
        const auto old = std::stable_partition(
            runs.begin(), runs.end(), [&](const Run& run) { return run.story.end() >= time; });
        for (auto run = old; run != runs.end(); ++run)
            Emit(std::move(*run), false);
        runs.erase(old, runs.end());
        sameNumber = runs.empty() ? open_.erase(sameNumber) : std::next(sameNumber);
    }
}

void RunAssembly::Finish() {
    EndRunsBefore(LogTime::max());
}

}  // namespace corvane
