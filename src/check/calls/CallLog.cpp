#include "check/calls/CallLog.h"

#include <algorithm>
#include <utility>

#include "check/calls/CallAssembly.h"
#include "check/calls/LogLine.h"
#include "check/calls/LogMessage.h"
#include "check/calls/LogReader.h"
#include "check/calls/RunAssembly.h"

namespace corvane {

namespace {

bool Later(const Call& one, const Call& other) {
    return one.begin() > other.begin();
}

// The calls that began last; the first of them stands in front.
class LastCalls {
public:
    LastCalls(std::vector<Call>& calls, std::size_t most) : calls_(calls), most_(most) {}

    void Add(Call call) {
        calls_.push_back(std::move(call));
        std::ranges::push_heap(calls_, &Later);
        if (calls_.size() <= most_)
            return;
        std::ranges::pop_heap(calls_, &Later);
        calls_.pop_back();
    }

private:
    std::vector<Call>& calls_;
    std::size_t most_;
};

}  // namespace

CallLog ReadCallLog(const LogFiles& files, LogSource& source, const CallFilter& filter,
                    std::size_t last) {
    CallLog log;
    LastCalls lastCalls(log.calls, last);
    CallAssembly calls([&](Call call) {
        if (!filter.Admits(call))
            return;
        log.summary.Add(call);
        lastCalls.Add(std::move(call));
    });
    RunAssembly runs(files, [&](CallEvent event) { calls.Take(std::move(event)); });

    LogReader reader(source);
    bool moreLines = false;  // the message before may go on
    while (const auto text = reader.Next()) {
        std::string_view rest = *text;
        for (bool first = true; !rest.empty(); first = false) {
            const auto line = ParseLogLine(rest);
            const auto next = FindLineWithin(line ? line->message : rest);
            if (line) {
                LogLine whole = *line;
                whole.message = whole.message.substr(0, next);
                const LogMessage message = UnderstandMessage(whole.message);
                moreLines = message.moreLines;
                runs.Take(whole, message);
            }
            log.odd.foreign += !line && first && !moreLines && next == std::string_view::npos;
            log.odd.joined += next != std::string_view::npos;
            if (next == std::string_view::npos)
                break;
            rest = (line ? line->message : rest).substr(next);
        }
    }
    runs.Finish();
    calls.Finish();
    std::ranges::stable_sort(log.calls, {}, &Call::begin);
    return log;
}

}  // namespace corvane
