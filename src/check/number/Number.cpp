#include "check/number/Number.h"

#include <algorithm>
#include <memory>

#include "check/Arguments.h"
#include "check/number/NumberParts.h"
#include "check/Output.h"
#include "check/Table.h"
#include "check/WithinTime.h"
#include "util/ErrorReport.h"
#include "util/Text.h"

namespace corvane {

const std::wstring_view numberHelp =
    L"CorvaneCheck number <text> [--ask]\n"
    L"\n"
    L"Tells what would become of a number under this user's settings: as the caller ID of a call, "
    L"\n"
    L"with what would be asked of GoldMine, and as a number that GoldMine passes on to be dialed.\n"
    L"Nothing is changed and nothing dialed. Behind -- a text may begin with dashes.\n"
    L"\n"
    L"  --ask  also searches it in GoldMine, if that runs. Only macros and queries are sent: "
    L"nothing\n"
    L"         is shown in GoldMine. A query on the phones of Contact1 stands in for GoldMine's "
    L"own\n"
    L"         look-up, which shows the contact; GoldMine may match more.\n"
    L"\n"
    L"Exit code: 0 all is well, 1 with warnings, 2 GoldMine or the settings cannot be asked, 3 "
    L"not\n"
    L"understood.\n";

namespace {

// A work that may be left behind owns all that it uses.
NumberPart AskInTime(const std::wstring& text, const InSurroundings& inSurroundings,
                     std::chrono::milliseconds limit) {
    const auto part = std::make_shared<NumberPart>();
    const bool ended = RunWithin(
        limit, {[part, text, inSurroundings] {
            try {
                inSurroundings(
                    [&](const CheckSurroundings& around) { *part = AskGoldMine(text, around); });
            } catch (...) {
                const RuntimeError error = ErrorReport::CurrentError();
                part->exitCode = ExitCode::broken;
                part->rows.emplace_back(
                    L"error", Join(std::to_wstring(error.number), L": ",
                                   TrimBlanks(ReplaceAll(error.description, lineBreak, L" "))));
            }
        }});
    if (ended)
        return *part;
    return {{{L"GoldMine", L"does not answer"}}, {}, ExitCode::broken};
}

}  // namespace

std::wstring NumberPartText(std::wstring_view title, const NumberPart& part) {
    Table table({{}, {}, {}});
    for (const auto& [what, text] : part.rows)
        table.Add({L"", what, text});
    for (const std::wstring& warning : part.warnings)
        table.Add({L"", L"warning", warning});
    return Join(title, L"\n", table.Text());
}

int RunNumber(std::span<const std::wstring> given, Output& output,
              const InSurroundings& inSurroundings, std::chrono::milliseconds limit) {
    const Arguments arguments(given, {{L"--ask"}});
    std::wstring text;
    for (const std::wstring& piece : arguments.others())
        text += Join(text.empty() ? L"" : L" ", piece);
    if (arguments.others().empty())
        throw WrongUse{L"Which number?"};

    int exitCode = ExitCode::fine;
    const auto tell = [&](std::wstring_view title, const NumberPart& part) {
        output.Write(NumberPartText(title, part));
        exitCode = std::max(exitCode, part.exitCode);
    };
    inSurroundings([&](const CheckSurroundings& around) {
        tell(callerIDTitle, AsCallerID(text, around));
        output.Line();
        tell(numberToDialTitle, AsNumberToDial(text, around));
    });
    if (arguments.Has(L"--ask")) {
        output.Line();
        tell(L"In GoldMine", AskInTime(text, inSurroundings, limit));
    }
    return exitCode;
}

}  // namespace corvane
