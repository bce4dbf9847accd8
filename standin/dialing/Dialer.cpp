#include "dialing/Dialer.h"

#include "data/IniFiles.h"
#include "shared/Handles.h"
#include "shared/Text.h"

namespace practice {
namespace {

constexpr std::wstring_view instructionStart = L"&Dial,";
constexpr std::wstring_view numberMark = L"%s";

// The command line that the instruction makes of the number; "" when it is no dialing instruction.
std::wstring DialCommandLine(const std::wstring& instruction, const std::wstring& number) {
    if (!StartsWithIgnoringCase(instruction, instructionStart))
        return {};
    const std::size_t comma = instruction.find(L',', instructionStart.size());
    if (comma == std::wstring::npos)
        return {};
    std::wstring commandLine = Trim(std::wstring_view(instruction).substr(comma + 1));
    if (const std::size_t mark = commandLine.find(numberMark); mark != std::wstring::npos)
        commandLine.replace(mark, numberMark.size(), number);
    return commandLine;
}

std::wstring ProgramOf(const std::wstring& commandLine) {
    const bool quoted = commandLine.front() == L'"';
    const std::size_t start = quoted ? 1 : 0;
    return commandLine.substr(start, commandLine.find(quoted ? L'"' : L' ', start) - start);
}

std::wstring OnLinesOfTheirOwn(const std::wstring& first, const std::wstring& second) {
    return first + L"\n\n" + second;
}

}  // namespace

Dialer::Dialer(const Options& options, Journal& journal) : options_(options), journal_(journal) {}

std::wstring Dialer::Dial(const std::wstring& number) {
    std::wstring reason = Start(number);
    if (!reason.empty())
        journal_.Note(L"not dialed: " + reason);
    return reason;
}

std::wstring Dialer::Start(const std::wstring& number) {
    if (Trim(number).empty())
        return L"There is no number to dial.";
    const std::wstring ini = PersonalIniFile(options_);
    const std::wstring instruction = ReadIniValue(ini, L"Modem", L"DDEDial");
    if (instruction.empty()) {
        return OnLinesOfTheirOwn(
            L"GoldMine does not know how to dial: there is no DDEDial instruction in section "
            L"[Modem] of this file.",
            ini);
    }
    std::wstring commandLine = DialCommandLine(instruction, number);
    if (commandLine.empty())
        return OnLinesOfTheirOwn(L"GoldMine cannot dial by this DDEDial instruction.", instruction);
    const std::wstring program = ProgramOf(commandLine);
    STARTUPINFOW startUp{};
    startUp.cb = sizeof startUp;
    PROCESS_INFORMATION process{};
    // The journal comes before anything that the program asks GoldMine, and only a dial that was
    // started stands there as one.
    std::wstring changeable = commandLine;
    if (!CreateProcessW(program.c_str(), changeable.data(), nullptr, nullptr, FALSE,
                        CREATE_SUSPENDED, nullptr, nullptr, &startUp, &process)) {
        return OnLinesOfTheirOwn(L"The program that dials cannot be started (error " +
                                     std::to_wstring(GetLastError()) + L").",
                                 commandLine);
    }
    const KernelHandle thread(process.hThread);
    const KernelHandle handle(process.hProcess);
    journal_.Note(L"dial " + commandLine);
    ResumeThread(thread.get());
    return {};
}

}  // namespace practice
