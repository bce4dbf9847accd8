#include "faults/Fault.h"

#include <algorithm>
#include <cwchar>
#include <utility>

#include "shared/Text.h"

namespace practice {
namespace {

using Action = std::optional<FaultAction>;  // nothing when the argument makes no sense

// The first word of the text, and the rest behind one run of blanks.
std::pair<std::wstring, std::wstring> SplitWord(const std::wstring& text) {
    const std::size_t blank = text.find_first_of(L" \t");
    if (blank == std::wstring::npos)
        return {text, {}};
    const std::size_t rest = text.find_first_not_of(L" \t", blank);
    return {text.substr(0, blank), rest == std::wstring::npos ? L"" : text.substr(rest)};
}

Action ReadDelay(const std::wstring& argument) {
    const long milliseconds = ToNumber(argument, -1);
    if (milliseconds < 0)
        return std::nullopt;
    return Delay{static_cast<DWORD>(milliseconds)};
}

Action ReadRaise(const std::wstring& argument) {
    const auto [name, rest] = SplitWord(argument);
    const auto [up, handle] = SplitWord(rest);
    if (name.empty() || (up != L"0" && up != L"1"))
        return std::nullopt;
    return RaisedEvent{name, up == L"1", ToNumber(handle, 0)};
}

Action ReadTiming(const std::wstring& argument) {
    using Moment = EventTiming::Moment;
    const auto [moment, signal] = SplitWord(argument);
    if (moment == L"on" && !signal.empty())
        return EventTiming{Moment::OnSignal, signal};
    constexpr std::pair<std::wstring_view, Moment> moments[] = {
        {L"after", Moment::AfterReply},
        {L"before", Moment::BeforeReply},
        {L"never", Moment::Never},
        {L"twice", Moment::Twice},
    };
    for (const auto& [name, value] : moments) {
        if (moment == name)
            return EventTiming{value, {}};
    }
    return std::nullopt;
}

Action ReadIds(const std::wstring& argument) {
    return argument == L"numeric" ? Action(NumericIds()) : std::nullopt;
}

Action ReadDie(const std::wstring& argument) {
    const bool done = argument == L"done";
    return done || argument.empty() ? Action(Die{done}) : std::nullopt;
}

Action ReadCall(const std::wstring& argument) {
    return argument.empty() ? std::nullopt : Action(RenamedReply{argument});
}

Action ReadPadded(const std::wstring& argument) {
    const long letters = ToNumber(argument, 0);
    if (letters < 1)
        return std::nullopt;
    return Padding{static_cast<std::size_t>(letters)};
}

Action ReadStatus(const std::wstring& argument) {
    const auto [digit, text] = SplitWord(argument);
    if (digit.size() != 1)
        return std::nullopt;
    return Status{digit[0], UnescapeLine(text)};
}

Action ReadValue(const std::wstring& argument) {
    return Status{L'1', UnescapeLine(argument)};
}

Action ReadReply(const std::wstring& argument) {
    Answer answer;
    answer.reply = UnescapeLine(argument);
    return answer;
}

Action ReadAccessDenied(const std::wstring&) {
    return FailedCall(E_ACCESSDENIED);
}

Action ReadResult(const std::wstring& argument) {
    wchar_t* end = nullptr;
    const auto result = static_cast<HRESULT>(std::wcstoul(argument.c_str(), &end, 16));
    if (argument.empty() || *end != L'\0' || SUCCEEDED(result))
        return std::nullopt;
    return FailedCall(result);
}

Action ReadException(const std::wstring& argument) {
    const auto [number, texts] = SplitWord(argument);
    const std::size_t bar = texts.find(L'|');
    wchar_t* end = nullptr;
    Answer answer;
    answer.kind = Answer::Kind::Exception;
    answer.number = static_cast<long>(std::wcstoll(number.c_str(), &end, 0));
    answer.source = texts.substr(0, bar);
    answer.description = bar == std::wstring::npos ? L"" : UnescapeLine(texts.substr(bar + 1));
    if (answer.number == 0 || *end != L'\0')
        return std::nullopt;
    return answer;
}

Action ReadBusy(const std::wstring& argument) {
    const long tries = ToNumber(argument, 0);
    if (tries < 1)
        return std::nullopt;
    return Busy{tries};
}

Action ReadAction(const std::wstring& text) {
    constexpr std::pair<std::wstring_view, Action (*)(const std::wstring&)> actions[] = {
        {L"delay", ReadDelay},
        {L"raise", ReadRaise},
        {L"event", ReadTiming},
        {L"ids", ReadIds},
        {L"die", ReadDie},
        {L"call", ReadCall},
        {L"padded", ReadPadded},
        {L"status", ReadStatus},
        {L"value", ReadValue},
        {L"reply", ReadReply},
        {L"access-denied", ReadAccessDenied},
        {L"hresult", ReadResult},
        {L"exception", ReadException},
        {L"busy", ReadBusy},
    };
    const auto [action, argument] = SplitWord(text);
    for (const auto& [name, read] : actions) {
        if (action == name)
            return read(argument);
    }
    return std::nullopt;
}

}  // namespace

bool Fault::Matches(const Command& command) const {
    if (call != command.call && (call != L"*" || command.call == adviseCall))
        return false;
    if (detail.empty())
        return true;
    constexpr std::wstring_view telling[] = {L"Macro", L"Command", L"Filename", L"Field",
                                             L"Window"};
    return command.text == detail ||
           std::any_of(std::begin(telling), std::end(telling),
                       [&](std::wstring_view name) { return command.Argument(name) == detail; });
}

std::optional<Fault> ReadFault(const std::wstring& line) {
    auto [selector, rest] = SplitWord(line);
    Action action = ReadAction(rest);
    if (!action)
        return std::nullopt;
    Fault fault;
    if (const std::size_t at = selector.rfind(L'@'); at != std::wstring::npos) {
        fault.first = fault.last = ToNumber(std::wstring_view(selector).substr(at + 1), 0);
        selector.resize(at);
    }
    if (const Busy* busy = std::get_if<Busy>(&*action))
        fault.last = fault.first + busy->tries - 1;
    const std::size_t colon = selector.find(L':');
    fault.call = selector.substr(0, colon);
    fault.detail = colon == std::wstring::npos ? L"" : selector.substr(colon + 1);
    fault.action = std::move(*action);
    if (fault.call.empty() || fault.first < 1)
        return std::nullopt;
    return fault;
}

}  // namespace practice
