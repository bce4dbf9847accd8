#pragma once

#include <string_view>

namespace corvane {

// What the program's end tells those who started it.
namespace ExitCode {
inline constexpr int fine = 0;
inline constexpr int warnings = 1;
inline constexpr int broken = 2;
inline constexpr int wrongUse = 3;  // nothing was looked at, or not all of it
}  // namespace ExitCode

// Where a command writes to. Lines end in "\n" here; whoever writes them out knows better.
class Output {
public:
    virtual ~Output() = default;
    virtual void Write(std::wstring_view text) = 0;
    // Beside the result: why there is none.
    virtual void WriteError(std::wstring_view text) = 0;

    void Line(std::wstring_view text = {}) {
        Write(text);
        Write(L"\n");
    }
};

}  // namespace corvane
