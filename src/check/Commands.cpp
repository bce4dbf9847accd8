#include "check/Commands.h"

#include <algorithm>

#include "check/Arguments.h"
#include "check/Output.h"
#include "check/Table.h"
#include "util/ErrorReport.h"
#include "util/Text.h"

namespace corvane {

namespace {

bool AsksForHelp(const std::wstring& argument) {
    return argument == L"--help" || argument == L"/?";
}

std::wstring Overview(std::span<const CheckCommand> commands) {
    Table table({{}, {}, {}});
    for (const CheckCommand& command : commands)
        table.Add({L"", std::wstring(command.name), std::wstring(command.summary)});
    return Join(L"CorvaneCheck looks at what links GoldMine with 3CX. It changes nothing.\n\n",
                L"CorvaneCheck <command> [...]\n\n", table.Text(),
                L"\nCorvaneCheck <command> --help says more.\n"
                L"Exit code: 0 fine, 1 with warnings, 2 broken, 3 not understood or not done.\n");
}

int Refuse(Output& output, std::wstring_view why, std::wstring_view who) {
    output.WriteError(Join(why, L" ", who, L" --help says what there is.\n"));
    return ExitCode::wrongUse;
}

}  // namespace

int RunCommand(std::span<const CheckCommand> commands, std::span<const std::wstring> arguments,
               Output& output) {
    if (arguments.empty() || AsksForHelp(arguments.front())) {
        output.Write(Overview(commands));
        return arguments.empty() ? ExitCode::wrongUse : ExitCode::fine;
    }
    const std::wstring& name = arguments.front();
    const auto command = std::ranges::find(commands, name, &CheckCommand::name);
    if (command == commands.end())
        return Refuse(output, Join(L"There is no command ", Quoted(name), L"."), L"CorvaneCheck");
    const auto rest = arguments.subspan(1);
    if (std::ranges::any_of(rest, &AsksForHelp)) {
        output.Write(command->help);
        return ExitCode::fine;
    }
    try {
        return command->run(rest, output);
    } catch (const WrongUse& wrong) {
        return Refuse(output, wrong.text, Join(L"CorvaneCheck ", name));
    } catch (...) {
        output.WriteError(Join(
            ReplaceAll(RuntimeErrorText(ErrorReport::CurrentError()), lineBreak, L"\n"), L"\n"));
        return ExitCode::wrongUse;
    }
}

}  // namespace corvane
