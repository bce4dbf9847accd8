#pragma once

#include <string>
#include <vector>

namespace end_to_end {

struct LogLine {
    std::string runNumber;
    std::string timeStamp;
    std::string identifier;
    std::string message;
};

// The lines of a log, each checked for its form: run number, time stamp, bracketed identifier with
// colon and message, separated by tabs, CR LF at the end. What has another form goes on with the
// message of the line before it, whose text has more than one line.
std::vector<LogLine> ParseLog(const std::string& text);

// The message with what no two runs have alike put into words: "<date>" for a date and time in the
// general format, "<seconds>" for seconds with three decimals, each only where one belongs.
std::string Normalised(const std::string& message);

// The local time now, as a time stamp.
std::string TimeStampNow();

}  // namespace end_to_end
