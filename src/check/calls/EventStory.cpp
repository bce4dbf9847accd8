#include "check/calls/EventStory.h"

#include <algorithm>
#include <utility>

#include "util/CommandLine.h"
#include "util/Text.h"

namespace corvane {

namespace {

// A shorter silence needs no box to explain it.
constexpr milliseconds shortestDoubtfulGap{2000};

std::wstring_view EventWord(std::wstring_view notification) {
    if (notification == L"S")
        return L"ringing";
    if (notification == L"C")
        return L"answered";
    if (notification == L"E")
        return L"ended";
    return L"event";
}

std::wstring_view DirectionWord(std::wstring_view callType) {
    if (callType == L"I")
        return L"in";
    if (callType == L"O")
        return L"out";
    return {};
}

std::wstring_view WithoutPoint(std::wstring_view text) {
    return text.ends_with(L'.') ? text.substr(0, text.size() - 1) : text;
}

// The last name of the path between quotes.
std::wstring FileNameIn(std::wstring_view quoted) {
    const auto end = quoted.rfind(L'"');
    const std::wstring_view path = quoted.substr(0, end);
    return std::wstring(path.substr(path.find_last_of(L"\\/\"") + 1));
}

// "1.234 seconds" behind a bracket; whatever the user's decimal sign is.
std::optional<milliseconds> SecondsIn(std::wstring_view text) {
    long long digits = 0;
    int decimals = -1;
    std::size_t at = 0;
    for (; at < text.size() && decimals < 3 && at < 12; ++at) {
        if (text[at] >= L'0' && text[at] <= L'9') {
            digits = digits * 10 + (text[at] - L'0');
            decimals += decimals >= 0 ? 1 : 0;
        } else if (decimals < 0 && at > 0) {
            decimals = 0;
        } else {
            return std::nullopt;
        }
    }
    return decimals == 3 ? std::optional(milliseconds(digits)) : std::nullopt;
}

}  // namespace

EventStory::EventStory(std::uint32_t runNumber, LogTime begin, std::wstring_view what) {
    event_.runNumber = runNumber;
    event_.begin = begin;
    event_.end = begin;
    event_.what = what;
}

void EventStory::ReadParameters(std::wstring_view echo) {
    handled_ = true;
    const auto tokens = CommandLineTokens(TrimBlanks(WithoutPoint(echo)));
    if (tokens.size() == 1) {
        event_.what = L"dial";
        event_.number = TrimBlanks(tokens[0]);
        return;
    }
    event_.what = EventWord({});
    for (const std::wstring& token : tokens) {
        const auto [name, value] = SwitchIn(token);
        if (name == L"/N")
            event_.what = EventWord(value);
        else if (name == L"/C")
            event_.number = value;
        else if (name == L"/T")
            event_.direction = DirectionWord(value);
        else if (name == L"/I")
            event_.identifier = value;
    }
}

void EventStory::Tell(LogTime time, const LogMessage& message, const std::wstring& detail) {
    MeasureBox(time, message.box);
    mayAsk_ = message.saying == Saying::versionKnown;
    // The record was brought up before this line.
    if (popSearch_ && shownLater_ && message.saying != Saying::slowCommand) {
        event_.timeToPop = time - event_.begin;
        shownLater_ = false;
    }
    event_.end = time;
    switch (message.saying) {
        case Saying::popMoment:
            popMoment_ = message.text;
            handled_ = true;
            break;
        case Saying::historyMoment:
            historyMoment_ = message.text;
            handled_ = true;
            break;
        case Saying::popSearch:
            popSearch_ = true;
            break;
        case Saying::searchDone:
            popSearch_ = false;
            break;
        case Saying::found:
            TellFound(time, detail);
            break;
        case Saying::notFound:
            notFound_ = true;
            Step(L"not found");
            break;
        case Saying::ignored:
            Step(Join(L"ignored: ", message.text));
            break;
        case Saying::done:
            Step(std::wstring(message.text));
            break;
        case Saying::linkPrepared:
            Step(Join(L"link to ", FileNameIn(WithoutPoint(detail))));
            break;
        case Saying::dialogAsked:
            dialogAwaited_ = true;
            break;
        case Saying::dialogFilled:
            dialogAwaited_ = false;
            Step(std::wstring(message.text));
            break;
        case Saying::dialed:
            dialed_ = true;
            Step(Join(L"dialed ", std::wstring_view(detail).substr(0, detail.find(L' '))));
            break;
        case Saying::slowCommand:
            TellSlowCommand(detail);
            break;
        case Saying::trouble:
            dialogAwaited_ = dialogAwaited_ && !message.text.starts_with(L"Complete Call");
            TellTrouble(std::wstring(message.text));
            break;
        case Saying::runTimeError: {
            constexpr std::size_t mostOfAnError = 160;
            TellTrouble(Join(L"run-time error '", detail.substr(0, mostOfAnError)));
            break;
        }
        case Saying::completed:
            completed_ = true;
            break;
        default:
            break;
    }
}

void EventStory::TellFound(LogTime time, const std::wstring& detail) {
    const auto at = detail.rfind(L" in ");
    const std::wstring_view where =
        WithoutPoint(std::wstring_view(detail).substr(at == std::wstring::npos ? 0 : at + 1));
    if (event_.number.empty())
        event_.number = detail.substr(0, at);
    Step(Join(popSearch_ ? L"popped " : L"found ", where));
    if (!popSearch_) {
        found_ = true;
        return;
    }
    popped_ = true;
    event_.timeToPop = time - event_.begin;
    shownLater_ = where == L"in an Additional Contact record";
}

void EventStory::TellTrouble(std::wstring text) {
    trouble_ = true;
    handled_ = true;
    Step(std::move(text));
}

void EventStory::TellSlowCommand(const std::wstring& detail) {
    constexpr std::wstring_view beforeTime = L" (";
    const auto bracket = detail.find(beforeTime);
    const auto time =
        bracket == std::wstring::npos
            ? std::nullopt
            : SecondsIn(std::wstring_view(detail).substr(bracket + beforeTime.size()));
    if (!time || (event_.slowest && event_.slowest->time >= *time))
        return;
    constexpr std::wstring_view beforeName = L"call=\"";
    const auto name = detail.find(beforeName, bracket);
    std::wstring command = L"command";
    if (name != std::wstring::npos) {
        const auto begin = name + beforeName.size();
        command = detail.substr(begin, detail.find(L'"', begin) - begin);
    }
    event_.slowest = SlowCommand{*time, std::move(command)};
}

void EventStory::MeasureBox(LogTime time, BoxOfLine box) {
    const milliseconds gap = time - event_.end;
    const bool certain = box == BoxOfLine::before || std::exchange(boxFollows_, false);
    boxFollows_ = box == BoxOfLine::behind;
    if (!certain && (!mayAsk_ || gap < shortestDoubtfulGap))
        return;
    if (gap >= milliseconds(0) && (!event_.box || event_.box->time < gap))
        event_.box = BoxGap{gap, certain};
}

// Lines of two runs that cannot be told apart may say the same.
void EventStory::Step(std::wstring text) {
    handled_ = true;
    if (std::ranges::find(event_.steps, text) == event_.steps.end())
        event_.steps.push_back(std::move(text));
}

void EventStory::Doubt(std::wstring_view why) {
    if (event_.uncertain.empty())
        event_.uncertain = why;
}

CallOutcome EventStory::Outcome() const {
    if (trouble_)
        return CallOutcome::trouble;
    if (popped_)
        return CallOutcome::popped;
    if (notFound_)
        return CallOutcome::notFound;
    if (found_)
        return CallOutcome::found;
    return dialed_ ? CallOutcome::dialed : CallOutcome::ignored;
}

std::wstring EventStory::WhyIgnored() const {
    std::wstring why;
    const auto add = [&](std::wstring_view what, std::wstring_view moment) {
        if (!moment.empty())
            why += Join(why.empty() ? L"" : L", ", what, L" is set to ", moment);
    };
    add(L"search", popMoment_);
    add(L"history", historyMoment_);
    return Join(L"ignored", why.empty() ? L"" : L": ", why);
}

std::optional<CallEvent> EventStory::Finish(bool lastLineSeen) && {
    if (!handled_)
        return std::nullopt;
    if (dialogAwaited_)
        TellTrouble(L"Complete Call did not come up");
    // One that was completed and goes on is a window that stands open.
    if (!lastLineSeen && !completed_)
        TellTrouble(L"did not end: waits in a box or for GoldMine, or was ended from outside");
    event_.outcome = Outcome();
    if (event_.steps.empty())
        Step(WhyIgnored());
    return std::move(event_);
}

}  // namespace corvane
