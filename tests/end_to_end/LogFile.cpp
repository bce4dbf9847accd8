#include "LogFile.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>

#include "support/Lines.h"

namespace end_to_end {

using namespace test_support;

namespace {

bool IsDigit(char each) {
    return each >= '0' && each <= '9';
}

// In the form, 9 stands for a digit and every other character for itself.
bool HasForm(const std::string& text, std::string_view form) {
    return text.size() == form.size() &&
           std::equal(text.begin(), text.end(), form.begin(), [](char each, char wanted) {
               return wanted == '9' ? IsDigit(each) : each == wanted;
           });
}

size_t CountDigits(const std::string& text, size_t begin) {
    size_t end = begin;
    while (end < text.size() && IsDigit(text[end]))
        ++end;
    return end - begin;
}

// "1/31/2026 9:05:07 AM", as the United States write it; the desk's locale is theirs.
bool IsGeneralDate(const std::string& text) {
    std::string form = text;
    for (char& each : form) {
        if (IsDigit(each))
            each = '9';
    }
    for (const char* month : {"9", "99"}) {
        for (const char* day : {"9", "99"}) {
            for (const char* hour : {"9", "99"}) {
                for (const char* half : {"AM", "PM"}) {
                    if (form ==
                        std::string(month) + "/" + day + "/9999 " + hour + ":99:99 " + half) {
                        return true;
                    }
                }
            }
        }
    }
    return false;
}

// Replaces "<digits>.<three digits>" between two texts.
void NormaliseSeconds(std::string& message, const std::string& before, const std::string& after) {
    const size_t found = message.find(before);
    if (found == std::string::npos)
        return;
    const size_t begin = found + before.size();
    const size_t whole = CountDigits(message, begin);
    const size_t point = begin + whole;
    if (whole == 0 || message.compare(point, 1, ".") != 0 || CountDigits(message, point + 1) != 3 ||
        message.compare(point + 4, after.size(), after) != 0) {
        return;
    }
    message.replace(begin, whole + 4, "<seconds>");
}

}  // namespace

std::vector<LogLine> ParseLog(const std::string& text) {
    std::vector<LogLine> lines;
    EXPECT_TRUE(text.empty() || text.ends_with("\r\n")) << "the last line has no end";
    for (const std::string& line : SplitLines(text, "\r\n")) {
        std::array<std::string, 4> fields;
        std::string rest = line;
        size_t count = 0;
        for (; count < 3; ++count) {
            const size_t tab = rest.find('\t');
            if (tab == std::string::npos)
                break;
            fields[count] = rest.substr(0, tab);
            rest.erase(0, tab + 1);
        }
        fields[3] = rest;
        const std::string& identifier = fields[2];
        const bool wellFormed =
            count == 3 && !fields[0].empty() && CountDigits(fields[0], 0) == fields[0].size() &&
            HasForm(fields[1], "99999999.999999.999") && identifier.size() >= 3 &&
            identifier.starts_with("[") && identifier.ends_with("]:");
        if (!wellFormed && lines.empty()) {
            ADD_FAILURE() << "no log line: " << testing::PrintToString(line);
            continue;
        }
        if (!wellFormed) {
            lines.back().message += "\r\n" + line;
            continue;
        }
        lines.push_back(
            {fields[0], fields[1], identifier.substr(1, identifier.size() - 3), fields[3]});
    }
    return lines;
}

std::string Normalised(const std::string& message) {
    const std::string separator = std::string(68, '-') + " ";
    if (message.starts_with(separator) && IsGeneralDate(message.substr(separator.size())))
        return separator + "<date>";
    std::string result = message;
    NormaliseSeconds(result, "Call processing completed in ", " seconds.");
    NormaliseSeconds(result, " second(s) (", " seconds): '");
    NormaliseSeconds(result, "\" in ", " seconds.");
    const std::string modified = ", modified ";
    const size_t found = result.find(modified);
    if (result.starts_with("Most recent file is \"") && found != std::string::npos) {
        const size_t begin = found + modified.size();
        const std::string date = result.substr(begin, result.size() - begin - 1);
        if (IsGeneralDate(date) && result.ends_with("."))
            result.replace(begin, date.size(), "<date>");
    }
    return result;
}

std::string TimeStampNow() {
    SYSTEMTIME now;
    GetLocalTime(&now);
    char text[64];
    std::snprintf(text, sizeof text, "%04d%02d%02d.%02d%02d%02d.%03d", now.wYear, now.wMonth,
                  now.wDay, now.wHour, now.wMinute, now.wSecond, now.wMilliseconds);
    return text;
}

}  // namespace end_to_end
