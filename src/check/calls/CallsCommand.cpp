#include "check/calls/CallsCommand.h"

#include "check/Arguments.h"
#include "check/calls/CallLog.h"
#include "check/calls/CallPage.h"
#include "check/calls/CallTable.h"
#include "check/calls/LogFiles.h"
#include "check/Output.h"
#include "util/Digits.h"
#include "util/Text.h"

namespace corvane {

const std::wstring_view callsSummary = L"what the log says about calls";

const std::wstring_view callsHelp =
    L"CorvaneCheck calls [options]\n"
    L"\n"
    L"Reads the log and tells calls: a row for each event with what came of it, and a summary.\n"
    L"\n"
    L"  --last N         only the last N calls as rows (20 unless it is given)\n"
    L"  --since WHEN     from 2024-03-11, \"2024-03-11 14:20\", 14:20 (today), 90m, 8h or 7d ago\n"
    L"  --call ID        of this call identifier of 3CX\n"
    L"  --number DIGITS  whose number holds these digits\n"
    L"  --slow SECONDS   where the contact, or a command to GoldMine, took as long\n"
    L"  --html FILE      writes a page with table and pictures instead\n"
    L"  --log FILE       another log than this computer's\n"
    L"\n"
    L"The summary counts all calls that the options admit, whatever --last says. Commands to\n"
    L"GoldMine are in the log when they took longer than the Advanced tab asks for. The lines of\n"
    L"the log name no user; what cannot be told apart is called uncertain.\n";

namespace {

constexpr std::size_t rowsOnScreen = 20;
constexpr std::size_t rowsOnPage = 500;

CallFilter FilterFrom(const Arguments& arguments, LogTime now) {
    CallFilter filter;
    if (const auto since = arguments.ValueOf(L"--since")) {
        filter.since = LogTimeFromText(*since, now);
        if (!filter.since)
            throw WrongUse{Join(L"--since takes a date or time, not ", Quoted(*since), L".")};
    }
    filter.identifier = arguments.ValueOf(L"--call").value_or(L"");
    if (const auto number = arguments.ValueOf(L"--number")) {
        filter.digits = ExtractDigits(*number, false, false);
        if (filter.digits.empty())
            throw WrongUse{Join(L"--number takes digits, not ", Quoted(*number), L".")};
    }
    if (const auto slow = arguments.NumberOf(L"--slow"))
        filter.slow = std::chrono::seconds(*slow);
    return filter;
}

}  // namespace

int RunCalls(std::span<const std::wstring> given, Output& output, const CallsSurroundings& around) {
    const Arguments arguments(given, {{L"--last", true},
                                      {L"--since", true},
                                      {L"--call", true},
                                      {L"--number", true},
                                      {L"--slow", true},
                                      {L"--html", true},
                                      {L"--log", true}});
    arguments.RefuseOthers();
    const CallFilter filter = FilterFrom(arguments, around.now);
    const auto page = arguments.ValueOf(L"--html");
    const auto last = arguments.NumberOf(L"--last");
    const std::wstring path = arguments.ValueOf(L"--log").value_or(around.logPath);

    const auto source = around.files.Open(path);
    const CallLog log = ReadCallLog(around.files, *source, filter,
                                    last   ? static_cast<std::size_t>(*last)
                                    : page ? rowsOnPage
                                           : rowsOnScreen);
    if (page) {
        around.files.Write(*page, CallPage(log, path, filter.Text(), around.now));
        output.Line(Join(L"Wrote ", *page, L"."));
    } else {
        output.Write(CallTableText(log));
    }
    return ExitCode::fine;
}

}  // namespace corvane
