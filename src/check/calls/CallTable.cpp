#include "check/calls/CallTable.h"

#include <vector>

#include "check/calls/CallTexts.h"
#include "check/Table.h"
#include "util/Text.h"

namespace corvane {

namespace {

std::wstring OutcomeCell(const CallEvent& event) {
    std::wstring text = event.outcome == CallOutcome::trouble ? L"trouble: " : L"";
    text += JoinedSteps(event);
    if (event.slowest)
        text += Join(L"; slowest command: ", SlowCommandText(*event.slowest));
    if (event.box)
        text += Join(L"; box: ", BoxText(*event.box));
    if (!event.uncertain.empty())
        text += Join(L"; uncertain: ", event.uncertain);
    return text;
}

std::wstring Rows(const std::vector<Call>& calls) {
    Table table({{L"Time"},
                 {L"Call"},
                 {L"Event"},
                 {L""},
                 {L"Number"},
                 {L"Up after", Table::Side::Right},
                 {L"Outcome"}});
    for (const Call& call : calls) {
        for (const CallEvent& event : call.events) {
            table.Add({DateTimeText(event.begin), event.identifier, event.what, event.direction,
                       event.number, event.timeToPop ? SecondsText(*event.timeToPop) : L"",
                       OutcomeCell(event)});
        }
    }
    return table.Text();
}

std::wstring Outcomes(const CallSummary& summary) {
    Table table({{}, {{}, Table::Side::Right}, {{}, Table::Side::Right}});
    for (std::size_t outcome = 0; outcome < callOutcomes; ++outcome) {
        const auto count = summary.outcomes()[outcome];
        if (count > 0) {
            table.Add({Join(L"  ", OutcomeWord(static_cast<CallOutcome>(outcome))),
                       std::to_wstring(count), PercentText(count, summary.calls())});
        }
    }
    return table.Text();
}

std::wstring Summary(const CallSummary& summary) {
    std::wstring text =
        Join(Counted(summary.calls(), L"call", L"calls"), L" with ",
             Counted(summary.events(), L"event", L"events"), L", ", DateTimeText(*summary.first()),
             L" to ", DateTimeText(*summary.last()), L"\n", Outcomes(summary));
    if (summary.pops() > 0) {
        text += Join(L"Time to pop: 50 % within ", SecondsText(*summary.TimeToPop(50)),
                     L", 95 % within ", SecondsText(*summary.TimeToPop(95)), L", 99 % within ",
                     SecondsText(*summary.TimeToPop(99)), L"\n");
    }
    if (summary.boxes() > 0)
        text += Join(Counted(summary.boxes(), L"event", L"events"), L" stood in a message box\n");
    if (summary.uncertain() > 0)
        text += Join(Counted(summary.uncertain(), L"event is", L"events are"), L" uncertain\n");
    return text;
}

}  // namespace

std::wstring CallTableText(const CallLog& log) {
    std::wstring text;
    if (log.summary.calls() == 0) {
        text = L"no calls\n";
    } else {
        text = log.calls.empty() ? L"" : Join(Rows(log.calls), L"\n");
        if (log.calls.size() < log.summary.calls() && !log.calls.empty())
            text += Join(L"The last ", std::to_wstring(log.calls.size()), L" of ");
        text += Summary(log.summary);
    }
    if (const std::wstring odd = OddLinesText(log.odd); !odd.empty())
        text += Join(odd, L"\n");
    return text;
}

}  // namespace corvane
