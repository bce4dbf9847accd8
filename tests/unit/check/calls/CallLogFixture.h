#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "check/calls/CallLog.h"
#include "check/calls/CallTexts.h"
#include "fakes/FakeLogFiles.h"
#include "util/Text.h"

namespace corvane {

// Reads logs that are written in the tests: a line is "17 05.087 [00042] message", at that second
// of 14:23 on one day; what is no such line stands in the log as it is.
inline std::string LogOf(const std::vector<std::string>& lines) {
    std::string log;
    for (const std::string& line : lines) {
        const auto space = line.find(' ');
        const auto bracket = line.find(" [");
        const auto end = line.find("] ");
        if (space == std::string::npos || bracket != space + 7 || end == std::string::npos) {
            log += line + "\r\n";
            continue;
        }
        log += line.substr(0, space) + "\t20240311.1423" + line.substr(space + 1, 6) + "\t" +
               line.substr(bracket + 1, end - bracket) + ":\t" + line.substr(end + 2) + "\r\n";
    }
    return log;
}

inline CallLog ReadLog(const std::string& bytes, const CallFilter& filter = {},
                       std::size_t last = 100) {
    const FakeLogFiles files;
    FakeLogSource source(bytes);
    return ReadCallLog(files, source, filter, last);
}

// "00042 ringing in 5551234567 popped: popped in Phone1 of the current record"
inline std::vector<std::wstring> RowsOf(const CallLog& log) {
    std::vector<std::wstring> rows;
    for (const Call& call : log.calls) {
        for (const CallEvent& event : call.events) {
            rows.push_back(Join(event.identifier, L" ", event.what, L" ", event.direction, L" ",
                                event.number, L" ", OutcomeWord(event.outcome), L": ",
                                JoinedSteps(event)));
        }
    }
    return rows;
}

using Rows = std::vector<std::wstring>;

inline const std::string popPhase = "Inbound call search for CallerID:  ";
inline const std::string historyPhase = "History creation:  ";

}  // namespace corvane
