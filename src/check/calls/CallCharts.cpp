#include "check/calls/CallCharts.h"

#include <algorithm>
#include <array>
#include <numeric>

#include "check/calls/CallTexts.h"
#include "util/Text.h"

namespace corvane {

namespace {

// In units of the pictures, which are as wide as the page lets them be.
constexpr int width = 720;
constexpr int height = 300;
constexpr int left = 52;
constexpr int right = 712;
constexpr int top = 60;
constexpr int bottom = 250;

std::wstring Number(std::uint64_t number) {
    return std::to_wstring(number);
}
std::wstring Number(int number) {
    return std::to_wstring(number);
}

// From the bottom up: what went well first. Trouble stands on top.
constexpr std::array<CallOutcome, callOutcomes> stackOrder = {
    CallOutcome::popped,  CallOutcome::found,    CallOutcome::dialed,
    CallOutcome::ignored, CallOutcome::notFound, CallOutcome::trouble};

std::uint64_t Total(const CallSummary::PerOutcome& counts) {
    return std::accumulate(counts.begin(), counts.end(), std::uint64_t{0});
}

// The distance of lines behind the bars: 1, 2 or 5 with zeros, at most five of them.
std::uint64_t TickStep(std::uint64_t most) {
    constexpr std::uint64_t mostTicks = 5;
    for (std::uint64_t unit = 1;; unit *= 10) {
        for (const std::uint64_t step : {unit, 2 * unit, 5 * unit}) {
            if (most <= step * mostTicks)
                return step;
        }
    }
}

// The upright axis: counts from 0 to a round number that is not less than the most.
class CountAxis {
public:
    explicit CountAxis(std::uint64_t most) : step_(TickStep(most)) {
        top_ = std::max<std::uint64_t>((most + step_ - 1) / step_, 1) * step_;
    }
    [[nodiscard]] int Y(std::uint64_t count) const {
        return bottom - static_cast<int>((bottom - top) * count / top_);
    }
    [[nodiscard]] std::wstring Svg(std::wstring_view label) const {
        std::wstring svg = L"<g class=\"axis\">";
        for (std::uint64_t count = 0; count <= top_; count += step_) {
            const std::wstring y = Number(Y(count));
            svg += Join(L"<line", count == 0 ? L"" : L" class=\"grid\"", L" x1=\"", Number(left),
                        L"\" x2=\"", Number(right), L"\" y1=\"", y, L"\" y2=\"", y,
                        L"\"/><text class=\"count\" x=\"", Number(left - 8), L"\" y=\"",
                        Number(Y(count) + 5), L"\">", Number(count), L"</text>");
        }
        return Join(svg, L"<text class=\"label\" x=\"0\" y=\"15\">", label, L"</text></g>");
    }

private:
    std::uint64_t step_;
    std::uint64_t top_ = 1;
};

std::wstring Text(std::wstring_view style, int x, int y, std::wstring_view text) {
    return Join(L"<text class=\"", style, L"\" x=\"", Number(x), L"\" y=\"", Number(y), L"\">",
                text, L"</text>");
}

// A bar with what it says when it is pointed at. A count that is there is seen.
std::wstring Bar(std::wstring_view style, int x, int barWidth, int y, int barBottom,
                 std::wstring_view says) {
    const std::wstring place =
        Join(L" x=\"", Number(x), L"\" y=\"", Number(y), L"\" width=\"", Number(barWidth),
             L"\" height=\"", Number(std::max(barBottom - y, 1)), L"\"");
    return Join(L"<g class=\"bar ", style, L"\"><title>", says, L"</title><rect class=\"fill\"",
                place, L"/><rect class=\"pattern\"", place, L"/></g>");
}

std::wstring Picture(std::wstring_view id, std::wstring_view title, std::wstring_view description,
                     std::wstring_view content) {
    return Join(L"<svg role=\"img\" aria-labelledby=\"", id, L"-title ", id,
                L"-desc\" viewBox=\"0 0 ", Number(width), L" ", Number(height), L"\"><title id=\"",
                id, L"-title\">", title, L"</title><desc id=\"", id, L"-desc\">", description,
                L"</desc>", content, L"</svg>");
}

std::wstring HourText(std::size_t hour) {
    return ZeroPadded(static_cast<int>(hour), 2);
}

std::wstring Key(const CallSummary& summary) {
    std::wstring key = L"<ul class=\"key\">";
    for (const CallOutcome outcome : stackOrder) {
        if (summary.outcomes()[static_cast<std::size_t>(outcome)] == 0)
            continue;
        key += Join(L"<li><svg class=\"swatch ", OutcomeClass(outcome),
                    L"\" viewBox=\"0 0 16 16\" aria-hidden=\"true\"><rect class=\"fill\" "
                    L"width=\"16\" height=\"16\"/><rect class=\"pattern\" width=\"16\" "
                    L"height=\"16\"/></svg>",
                    OutcomeWord(outcome), L"</li>");
    }
    return Join(key, L"</ul>");
}

std::wstring HourTable(const CallSummary& summary) {
    std::wstring table =
        L"<details><summary>The numbers</summary><table><caption>Calls by hour of the day and "
        L"outcome</caption><thead><tr><th scope=\"col\">Hour</th>";
    for (const CallOutcome outcome : stackOrder)
        table += Join(L"<th scope=\"col\" class=\"number\">", OutcomeWord(outcome), L"</th>");
    table += L"</tr></thead><tbody>";
    for (std::size_t hour = 0; hour < summary.hours().size(); ++hour) {
        if (Total(summary.hours()[hour]) == 0)
            continue;
        table +=
            Join(L"<tr><th scope=\"row\">", HourText(hour), L" to ", HourText(hour + 1), L"</th>");
        for (const CallOutcome outcome : stackOrder) {
            table +=
                Join(L"<td class=\"number\">",
                     Number(summary.hours()[hour][static_cast<std::size_t>(outcome)]), L"</td>");
        }
        table += L"</tr>";
    }
    return Join(table, L"</tbody></table></details>");
}

// A column of the picture of times: from this many milliseconds to the next one's.
constexpr auto edges =
    std::to_array<int>({0, 100, 200, 300, 500, 700, 1000, 1500, 2000, 3000, 5000, 10000, 30000});
constexpr int columns = static_cast<int>(edges.size());
constexpr int columnWidth = (right - left) / columns;

milliseconds Edge(int column) {
    return column < columns ? milliseconds(edges[static_cast<std::size_t>(column)])
                            : CallSummary::longestTime + milliseconds(1);
}

std::wstring EdgeText(int column) {
    const int edge = edges[static_cast<std::size_t>(column)];
    return edge % 1000 == 0 ? Number(edge / 1000)
                            : Join(Number(edge / 1000), L".", Number(edge % 1000 / 100));
}

std::wstring RangeText(int column) {
    if (column + 1 == columns)
        return Join(EdgeText(column), L" s and more");
    return Join(EdgeText(column), L" to ", EdgeText(column + 1), L" s");
}

// Where a time stands between the edges; beyond the last one, in the middle of what is left.
int TimeX(milliseconds time) {
    int column = 0;
    while (column + 1 < columns && Edge(column + 1) <= time)
        ++column;
    const int begin = left + column * columnWidth;
    if (column + 1 == columns)
        return begin + columnWidth / 2;
    return begin + static_cast<int>((time - Edge(column)).count() * columnWidth /
                                    (Edge(column + 1) - Edge(column)).count());
}

std::wstring Percentiles(const CallSummary& summary) {
    constexpr int labelWidth = 160;
    std::wstring lines;
    std::wstring labels;
    int y = 15;
    for (const int percent : {50, 95, 99}) {
        const milliseconds time = *summary.TimeToPop(percent);
        const int x = TimeX(time);
        // The pale line below keeps the dotted one apart from the bars.
        for (const std::wstring_view style : {L"mark below", L"mark"}) {
            lines += Join(L"<line class=\"", style, L"\" x1=\"", Number(x), L"\" x2=\"", Number(x),
                          L"\" y1=\"", Number(y - 9), L"\" y2=\"", Number(bottom), L"\"/>");
        }
        const bool fitsBehind = x + labelWidth < right;
        labels += Text(fitsBehind ? L"mark" : L"mark before", fitsBehind ? x + 6 : x - 6, y,
                       Join(Number(percent), L" % within ", SecondsText(time)));
        y += 17;
    }
    return lines + labels;
}

std::wstring TimeTable(const CallSummary& summary) {
    std::wstring table =
        L"<details><summary>The numbers</summary><table><caption>Time to pop</caption><thead><tr>"
        L"<th scope=\"col\">Time</th><th scope=\"col\" class=\"number\">Pops</th></tr></thead>"
        L"<tbody>";
    for (int column = 0; column < columns; ++column) {
        table += Join(L"<tr><th scope=\"row\">", RangeText(column), L"</th><td class=\"number\">",
                      Number(summary.PopsBetween(Edge(column), Edge(column + 1))), L"</td></tr>");
    }
    return Join(table, L"</tbody></table></details>");
}

}  // namespace

std::wstring OutcomeClass(CallOutcome outcome) {
    return ReplaceAll(OutcomeWord(outcome), L" ", L"-");
}

std::wstring ChartPatterns() {
    constexpr std::wstring_view begin =
        L"<pattern patternUnits=\"userSpaceOnUse\" width=\"8\" height=\"8\" id=\"pattern-";
    return Join(L"<svg class=\"patterns\" width=\"0\" height=\"0\" aria-hidden=\"true\"><defs>",
                begin, L"found\"><path d=\"M0 2H8M0 6H8\"/></pattern>", begin,
                L"dialed\"><path d=\"M2 0V8M6 0V8\"/></pattern>", begin,
                L"ignored\"><path d=\"M2 1.5v1M6 5.5v1\"/></pattern>", begin,
                L"not-found\"><path d=\"M-2 2L2-2M0 8L8 0M6 10L10 6\"/></pattern>", begin,
                L"trouble\"><path d=\"M0 0L8 8M0 8L8 0\"/></pattern></defs></svg>");
}

std::wstring CallsByHour(const CallSummary& summary) {
    std::uint64_t most = 0;
    std::size_t busiest = 0;
    for (std::size_t hour = 0; hour < summary.hours().size(); ++hour) {
        if (Total(summary.hours()[hour]) > most) {
            most = Total(summary.hours()[hour]);
            busiest = hour;
        }
    }
    const CountAxis axis(most);
    constexpr int slot = (right - left) / 24;
    std::wstring svg = axis.Svg(L"Calls");
    for (std::size_t hour = 0; hour < summary.hours().size(); ++hour) {
        const int x = left + static_cast<int>(hour) * slot;
        svg += Text(L"tick", x + slot / 2, bottom + 20, HourText(hour));
        std::uint64_t stacked = 0;
        for (const CallOutcome outcome : stackOrder) {
            const auto count = summary.hours()[hour][static_cast<std::size_t>(outcome)];
            if (count == 0)
                continue;
            svg += Bar(OutcomeClass(outcome), x + 3, slot - 6, axis.Y(stacked + count),
                       axis.Y(stacked),
                       Join(HourText(hour), L" to ", HourText(hour + 1), L": ", Number(count), L" ",
                            OutcomeWord(outcome)));
            stacked += count;
        }
    }
    svg += Text(L"label middle", (left + right) / 2, height - 6, L"Hour of the day");
    const std::wstring description = Join(
        L"Most calls, ", Number(most), L" of ", Number(summary.calls()), L", began between ",
        HourText(busiest), L" and ", HourText(busiest + 1), L". The table below has all numbers.");
    return Join(L"<figure><figcaption>Calls by hour of the day</figcaption>",
                Picture(L"hours", L"Calls by hour of the day and outcome", description, svg),
                Key(summary), HourTable(summary), L"</figure>");
}

std::wstring TimesToPop(const CallSummary& summary) {
    if (summary.pops() == 0)
        return {};
    std::uint64_t most = 0;
    for (int column = 0; column < columns; ++column)
        most = std::max(most, summary.PopsBetween(Edge(column), Edge(column + 1)));
    const CountAxis axis(most);
    std::wstring svg = axis.Svg(L"Pops");
    for (int column = 0; column < columns; ++column) {
        const int x = left + column * columnWidth;
        const auto count = summary.PopsBetween(Edge(column), Edge(column + 1));
        svg += Text(L"tick", x, bottom + 20, EdgeText(column));
        if (count > 0) {
            svg += Bar(L"popped", x + 1, columnWidth - 2, axis.Y(count), bottom,
                       Join(RangeText(column), L": ", Number(count)));
        }
    }
    svg += Percentiles(summary);
    svg +=
        Text(L"label middle", (left + right) / 2, height - 6, L"Seconds until the contact was up");
    const std::wstring description =
        Join(L"Of ", Counted(summary.pops(), L"pop", L"pops"), L", 50 % came within ",
             SecondsText(*summary.TimeToPop(50)), L", 95 % within ",
             SecondsText(*summary.TimeToPop(95)), L", 99 % within ",
             SecondsText(*summary.TimeToPop(99)), L". The table below has all numbers.");
    return Join(L"<figure><figcaption>Time to pop</figcaption>",
                Picture(L"times", L"How long it took until the contact was up", description, svg),
                L"<p class=\"note\">To the right, columns stand for longer times.</p>",
                TimeTable(summary), L"</figure>");
}

}  // namespace corvane
