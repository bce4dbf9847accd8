#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace test_support {

using Lines = std::vector<std::string>;

// The lines of a text whose every line ends in this line end; what stands behind the last one is a
// line of its own.
inline Lines SplitLines(std::string_view text, std::string_view lineEnd) {
    Lines lines;
    while (!text.empty()) {
        const size_t end = text.find(lineEnd);
        lines.emplace_back(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + lineEnd.size());
    }
    return lines;
}

// The practice programs write lines with backslash, CR, LF and tab as \\, \r, \n and \t.

inline std::string EscapedLine(std::string_view text) {
    std::string line;
    for (const char each : text) {
        switch (each) {
            case '\\':
                line += "\\\\";
                break;
            case '\r':
                line += "\\r";
                break;
            case '\n':
                line += "\\n";
                break;
            case '\t':
                line += "\\t";
                break;
            default:
                line += each;
        }
    }
    return line;
}

inline std::string UnescapedLine(std::string_view line) {
    std::string text;
    for (size_t i = 0; i < line.size(); ++i) {
        if (line[i] != '\\' || i + 1 == line.size()) {
            text += line[i];
            continue;
        }
        const char escaped = line[++i];
        text += escaped == 'r' ? '\r' : escaped == 'n' ? '\n' : escaped == 't' ? '\t' : escaped;
    }
    return text;
}

inline Lines UnescapedLines(Lines lines) {
    for (std::string& line : lines)
        line = UnescapedLine(line);
    return lines;
}

}  // namespace test_support
