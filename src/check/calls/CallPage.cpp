#include "check/calls/CallPage.h"

#include <algorithm>
#include <array>

#include "check/calls/CallCharts.h"
#include "check/calls/CallPageStyle.h"
#include "check/calls/CallTexts.h"
#include "check/calls/Html.h"
#include "util/Text.h"

namespace corvane {

namespace {

// Beside the word, so that one looks down the column and sees.
std::wstring_view OutcomeSign(CallOutcome outcome) {
    constexpr std::array<std::wstring_view, callOutcomes> signs = {L"!",      L"\x2713", L"?",
                                                                   L"\x25CB", L"\x2192", L"\x2013"};
    return signs[static_cast<std::size_t>(outcome)];
}

std::wstring Fact(std::wstring_view name, std::wstring_view value) {
    return Join(L"<div><dt>", name, L"</dt><dd>", value, L"</dd></div>");
}

std::wstring Facts(const CallSummary& summary) {
    const auto count = [&](CallOutcome outcome) {
        return summary.outcomes()[static_cast<std::size_t>(outcome)];
    };
    std::wstring facts =
        Join(L"<dl class=\"facts\">", Fact(L"Calls", std::to_wstring(summary.calls())),
             Fact(L"Contact popped", PercentText(count(CallOutcome::popped), summary.calls())),
             Fact(L"With trouble", std::to_wstring(count(CallOutcome::trouble))));
    if (summary.pops() > 0) {
        for (const int percent : {50, 95, 99}) {
            facts += Fact(Join(std::to_wstring(percent), L" % popped within"),
                          SecondsText(*summary.TimeToPop(percent)));
        }
    }
    return Join(facts, L"</dl>");
}

// What stands below the steps of an event.
std::wstring Note(std::wstring_view what, std::wstring_view text) {
    return Join(L"<span class=\"below\">", what, L": ", HtmlText(text), L"</span>");
}

std::wstring EventCells(const CallEvent& event) {
    std::wstring steps = HtmlText(JoinedSteps(event));
    if (event.slowest)
        steps += Note(L"Slowest command", SlowCommandText(*event.slowest));
    if (event.box)
        steps += Note(L"Message box", BoxText(*event.box));
    if (!event.uncertain.empty())
        steps += Note(L"Uncertain", event.uncertain);
    return Join(L"<td class=\"whole\">", DateTimeText(event.begin), L"</td><td>", event.what,
                L"</td><td class=\"outcome ", OutcomeClass(event.outcome),
                L"\"><span aria-hidden=\"true\">", OutcomeSign(event.outcome), L"</span><b>",
                OutcomeWord(event.outcome), L"</b></td><td class=\"steps\">", steps,
                L"</td><td class=\"number\">",
                event.timeToPop ? SecondsText(*event.timeToPop) : L"", L"</td>");
}

std::wstring CallRows(const Call& call) {
    const auto known = std::ranges::find_if(
        call.events, [](const CallEvent& event) { return !event.number.empty(); });
    const CallEvent& event = known == call.events.end() ? call.events.front() : *known;
    const std::wstring span = Join(L" rowspan=\"", std::to_wstring(call.events.size()), L"\"");
    std::wstring rows = Join(L"<tbody><tr><th scope=\"rowgroup\"", span, L">",
                             event.identifier.empty() ? L"\x2013" : HtmlText(event.identifier),
                             L"</th><td", span, L" class=\"whole\">", HtmlText(event.number),
                             L" <span class=\"direction\">", event.direction, L"</span></td>");
    std::wstring_view rowBegin;  // of the first row it stands there already
    for (const CallEvent& each : call.events) {
        rows += Join(rowBegin, EventCells(each), L"</tr>");
        rowBegin = L"<tr>";
    }
    return Join(rows, L"</tbody>\n");
}

std::wstring CallsTable(const CallLog& log) {
    std::wstring table = Join(
        L"<h2 id=\"calls\">The calls</h2><div class=\"calls\" role=\"region\" "
        L"aria-labelledby=\"calls\" tabindex=\"0\"><table><caption>",
        log.calls.size() < log.summary.calls()
            ? Join(L"The last ", std::to_wstring(log.calls.size()), L" of ",
                   std::to_wstring(log.summary.calls()), L" calls, the newest first.")
            : L"All of them, the newest first.",
        L"</caption><thead><tr><th scope=\"col\">Call</th><th scope=\"col\">Number</th>"
        L"<th scope=\"col\">Time</th><th scope=\"col\">Event</th><th scope=\"col\">Outcome</th>"
        L"<th scope=\"col\">What happened</th><th scope=\"col\" class=\"number\">Up after</th>"
        L"</tr></thead>\n");
    std::for_each(log.calls.rbegin(), log.calls.rend(),
                  [&](const Call& call) { table += CallRows(call); });
    return Join(table, L"</table></div>");
}

constexpr std::wstring_view howToRead =
    L"<h2>How to read this</h2>"
    L"<p><b>Up after</b> is the time from a run's first line in the log until GoldMine showed the "
    L"contact. <b>Slowest command</b> is the longest of those to GoldMine that the log tells of. "
    L"<b>Message box</b> is the silence around a line that comes with a box: it stood that long at "
    L"most.</p>"
    L"<p>A call counts once, by the first of these that any of its events came to: trouble, "
    L"popped, "
    L"not found, found, dialed, ignored. <b>Found</b> is a contact that was looked up for the "
    L"history only.</p>"
    L"<p>The lines of the log name no user. What could be another user's is called uncertain.</p>";

}  // namespace

std::string CallPage(const CallLog& log, std::wstring_view logPath, std::wstring_view filter,
                     LogTime made) {
    const CallSummary& summary = log.summary;
    std::wstring page = Join(
        L"<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\">"
        L"<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">"
        L"<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; "
        L"style-src 'unsafe-inline'\"><title>Calls</title><style>",
        callPageStyle, L"</style></head>\n<body>", ChartPatterns(), L"<h1>Calls</h1>");
    if (summary.calls() > 0) {
        page += Join(L"<p class=\"lead\">", DateTimeText(*summary.first()), L" to ",
                     DateTimeText(*summary.last()),
                     filter.empty() ? L"" : Join(L" &middot; only ", HtmlText(filter)),
                     L"</p>\n<main>", Facts(summary), L"<div class=\"figures\">",
                     CallsByHour(summary), TimesToPop(summary), L"</div>\n");
        if (!log.calls.empty())
            page += CallsTable(log);
        page += L"</main>\n";
    } else {
        page += L"<main><p>No calls.</p></main>\n";
    }
    const std::wstring odd = OddLinesText(log.odd);
    page +=
        Join(L"<footer>", howToRead, L"<p class=\"note\">Made ", DateTimeText(made), L" from ",
             HtmlText(logPath), L".", odd.empty() ? L"" : Join(L" Beside the calls: ", odd, L"."),
             L"</p></footer></body></html>\n");
    return AsciiPage(page);
}

}  // namespace corvane
