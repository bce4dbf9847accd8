#include "check/wiring/Wiring.h"

#include <array>
#include <functional>
#include <memory>
#include <utility>

#include "check/Arguments.h"
#include "check/Output.h"
#include "check/Table.h"
#include "check/wiring/Findings.h"
#include "check/wiring/Links.h"
#include "check/wiring/WiringJson.h"
#include "check/WithinTime.h"
#include "util/ErrorReport.h"
#include "util/Text.h"

namespace corvane {

const std::wstring_view wiringHelp =
    L"CorvaneCheck wiring [--json]\n"
    L"\n"
    L"Looks at each link between GoldMine and 3CX, for this user on this computer, and says what "
    L"to\n"
    L"do about those that are broken. It changes nothing, asks nobody, starts no GoldMine, and "
    L"ends\n"
    L"within ten seconds.\n"
    L"\n"
    L"  --json  the same for programs, in ASCII\n"
    L"\n"
    L"Exit code: 0 all is well, 1 with warnings, 2 something is broken, 3 not understood.\n";

namespace {

std::wstring WithLineBreaksAsBlanks(const std::wstring& text) {
    return std::wstring(TrimBlanks(ReplaceAll(text, lineBreak, L" ")));
}

// Looks at a group's links; an error is a finding on the link that it comes from.
void LookAt(const LinkGroup& group, const InSurroundings& inSurroundings, Findings& findings) {
    try {
        inSurroundings([&](const CheckSurroundings& around) { group.look(around, findings); });
    } catch (...) {
        const RuntimeError error = ErrorReport::CurrentError();
        findings.Tell({LinkState::Broken,
                       Join(L"error ", std::to_wstring(error.number), L": ",
                            WithLineBreaksAsBlanks(error.description)),
                       L""});
        findings.Skip(L"the link before it ended in an error");
    }
}

std::wstring_view PrintedWordOf(LinkState state) {
    switch (state) {
        case LinkState::Ok:
            return L"ok";
        case LinkState::Warning:
            return L"warning";
        case LinkState::Broken:
            return L"BROKEN";
        default:
            return L"-";
    }
}

int ExitCodeOf(LinkState worst) {
    switch (worst) {
        case LinkState::Broken:
            return ExitCode::broken;
        case LinkState::Warning:
            return ExitCode::warnings;
        default:
            return ExitCode::fine;
    }
}

}  // namespace

std::wstring WiringText(std::span<const Findings::Told> findings) {
    Table table({{}, {}, {}});
    int warnings = 0;
    int broken = 0;
    for (const auto& [link, finding] : findings) {
        warnings += finding.state == LinkState::Warning ? 1 : 0;
        broken += finding.state == LinkState::Broken ? 1 : 0;
        table.Add({std::wstring(PrintedWordOf(finding.state)), std::wstring(link), finding.text});
        if (!finding.fix.empty())
            table.Add({L"", L"", L"-> " + finding.fix});
    }
    std::wstring summary = L"All is well.";
    if (warnings + broken > 0) {
        summary = Join(std::to_wstring(broken), L" broken, ", std::to_wstring(warnings),
                       warnings == 1 ? L" warning." : L" warnings.");
    }
    return Join(table.Text(), L"\n", summary, L"\n");
}

std::vector<Findings::Told> LookAtLinks(const InSurroundings& inSurroundings,
                                        std::chrono::milliseconds limit) {
    // None waits for another.
    std::vector<std::shared_ptr<Findings>> groups;
    std::vector<std::function<void()>> works;
    for (const LinkGroup* group : {&threeCXLinks, &goldMineLinks, &recordingsLinks, &userLinks}) {
        const auto findings = std::make_shared<Findings>(group->links);
        groups.push_back(findings);
        works.emplace_back(
            [group, inSurroundings, findings] { LookAt(*group, inSurroundings, *findings); });
    }
    // Links that hang are findings, too.
    static_cast<void>(RunWithin(limit, std::move(works)));

    std::vector<Findings::Told> all;
    for (const auto& findings : groups) {
        for (Findings::Told& told : findings->All())
            all.push_back(std::move(told));
    }
    return all;
}

int RunWiring(std::span<const std::wstring> given, Output& output,
              const InSurroundings& inSurroundings, std::chrono::milliseconds limit) {
    const Arguments arguments(given, {{L"--json"}});
    arguments.RefuseOthers();
    const auto all = LookAtLinks(inSurroundings, limit);
    output.Write(arguments.Has(L"--json") ? WiringJson(all) : WiringText(all));
    return ExitCodeOf(WorstOf(all));
}

}  // namespace corvane
