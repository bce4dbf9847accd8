#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>

namespace corvane {

class Output;

// One of the things that the program can look at.
struct CheckCommand {
    std::wstring_view name;
    std::wstring_view summary;  // for the list of commands
    std::wstring_view help;     // all that there is to say, whole lines
    // Takes what stands behind the name; returns the exit code. May raise WrongUse.
    std::function<int(std::span<const std::wstring>, Output&)> run;
};

// Runs the command that the arguments name, or writes the help that they ask for. An error of a
// command is told, and its exit code is that of a wrong use.
[[nodiscard]] int RunCommand(std::span<const CheckCommand> commands,
                             std::span<const std::wstring> arguments, Output& output);

}  // namespace corvane
