#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "check/CheckSurroundings.h"
#include "check/Output.h"

namespace corvane {

class Form;

// What becomes of a number on one of its ways.
struct NumberPart {
    std::vector<std::pair<std::wstring, std::wstring>> rows;  // what, and its text
    std::vector<std::wstring> warnings;
    int exitCode = ExitCode::fine;

    void Warn(std::wstring text) {
        warnings.push_back(std::move(text));
        if (exitCode == ExitCode::fine)
            exitCode = ExitCode::warnings;
    }
};

inline constexpr std::wstring_view callerIDTitle = L"As a caller ID";
inline constexpr std::wstring_view numberToDialTitle = L"As a number to dial";

[[nodiscard]] NumberPart AsCallerID(const std::wstring& text, const CheckSurroundings& around);
[[nodiscard]] NumberPart AsNumberToDial(const std::wstring& text, const CheckSurroundings& around);
// Searches it in the GoldMine of this session, by macros and queries.
[[nodiscard]] NumberPart AskGoldMine(const std::wstring& text, const CheckSurroundings& around);

// As it is printed.
[[nodiscard]] std::wstring NumberPartText(std::wstring_view title, const NumberPart& part);

// Loads this user's settings; those that the program would not take are told as warnings.
void LoadSettings(Form& form, const CheckSurroundings& around, NumberPart& part);

}  // namespace corvane
