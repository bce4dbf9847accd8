#include "LogFile.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include "support/Lines.h"
#include "support/windows/Encoding.h"

#include <oleauto.h>

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

// A date and time as the user's locale writes them: read, it is written again as it was.
bool IsGeneralDate(const std::string& text) {
    std::wstring wide = Wide(text);
    DATE date = 0;
    BSTR written = nullptr;
    const bool isDate = SUCCEEDED(VarDateFromStr(wide.data(), LOCALE_USER_DEFAULT, 0, &date)) &&
                        SUCCEEDED(VarBstrFromDate(date, LOCALE_USER_DEFAULT, 0, &written));
    const bool isSame = isDate && Utf8(written) == text;
    SysFreeString(written);
    constexpr double firstDay = 1;  // before it: a time without a date
    return isSame && date >= firstDay && date != std::floor(date);
}

std::string DecimalSign() {
    wchar_t sign[8] = {};
    GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, sign, 8);
    return Utf8(sign);
}

// Replaces "<digits><decimal sign><three digits>" between two texts.
void NormaliseSeconds(std::string& message, const std::string& before, const std::string& after) {
    const size_t found = message.find(before);
    if (found == std::string::npos)
        return;
    const size_t begin = found + before.size();
    const size_t whole = CountDigits(message, begin);
    const std::string sign = DecimalSign();
    const size_t decimals = begin + whole + sign.size();
    if (whole == 0 || message.compare(begin + whole, sign.size(), sign) != 0 ||
        CountDigits(message, decimals) != 3 ||
        message.compare(decimals + 3, after.size(), after) != 0) {
        return;
    }
    message.replace(begin, decimals + 3 - begin, "<seconds>");
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
