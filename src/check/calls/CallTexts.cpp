#include "check/calls/CallTexts.h"

#include "util/Text.h"

namespace corvane {

std::wstring JoinedSteps(const CallEvent& event) {
    std::wstring text;
    for (const std::wstring& step : event.steps)
        text += Join(text.empty() ? L"" : L"; ", step);
    return text;
}

std::wstring BoxText(const BoxGap& box) {
    return Join(SecondsText(box.time), box.certain ? L" at most" : L", if it was a box");
}

std::wstring SlowCommandText(const SlowCommand& slow) {
    return Join(slow.name, L" ", SecondsText(slow.time));
}

std::wstring Counted(std::uint64_t count, std::wstring_view one, std::wstring_view many) {
    return Join(count == 0 ? L"no" : std::to_wstring(count), L" ", count == 1 ? one : many);
}

std::wstring PercentText(std::uint64_t part, std::uint64_t whole) {
    const std::uint64_t tenths = whole == 0 ? 0 : (part * 1000 + whole / 2) / whole;
    return Join(std::to_wstring(tenths / 10), L".", std::to_wstring(tenths % 10), L" %");
}

std::wstring OddLinesText(const OddLines& odd) {
    std::wstring text;
    if (odd.foreign > 0)
        text += Join(Counted(odd.foreign, L"line", L"lines"), L" of the log not the program's");
    if (odd.joined > 0) {
        text += Join(text.empty() ? L"" : L"; ", Counted(odd.joined, L"line", L"lines"),
                     L" joined to another, taken apart");
    }
    return text;
}

}  // namespace corvane
