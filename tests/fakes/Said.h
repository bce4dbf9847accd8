#pragma once

#include <cstdlib>
#include <fstream>
#include <set>
#include <string>
#include <string_view>

namespace corvane::test {

// Writes down what the program said in the tests, each text once and in a line with its kind before
// it, into the file that CORVANE_SAID names: the pages that list the program's texts are held
// against it. A line break is a blank there. One process writes the file anew.
inline void WriteDown(std::string_view kind, std::wstring_view text) {
    static const char* const path = std::getenv("CORVANE_SAID");
    constexpr std::size_t longest = 10000;  // longer ones are meant to be too long
    if (!path || text.size() > longest)
        return;
    std::string line(kind);
    line += '\t';
    for (const wchar_t each : text)
        line += each < L' ' ? ' ' : each < 0x7F ? static_cast<char>(each) : '?';
    static std::ofstream file(path, std::ios::trunc);
    static std::set<std::string> lines;
    if (lines.insert(line).second)
        file << line << '\n';
}

}  // namespace corvane::test
