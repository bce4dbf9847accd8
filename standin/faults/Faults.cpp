#include "faults/Faults.h"

#include <algorithm>
#include <cwchar>
#include <tuple>
#include <utility>

#include "shared/Files.h"
#include "shared/Text.h"

namespace practice {
namespace {

// The first word of the text, and the rest behind one run of blanks.
std::pair<std::wstring, std::wstring> SplitWord(const std::wstring& text) {
    const size_t blank = text.find_first_of(L" \t");
    if (blank == std::wstring::npos) {
        return {text, {}};
    }
    const size_t rest = text.find_first_not_of(L" \t", blank);
    return {text.substr(0, blank), rest == std::wstring::npos ? L"" : text.substr(rest)};
}

Answer Failed(HRESULT result) {
    Answer answer;
    answer.kind = Answer::Kind::Result;
    answer.result = result;
    return answer;
}

std::optional<EventTiming> ReadTiming(const std::wstring& argument) {
    using Moment = EventTiming::Moment;
    const auto [moment, signal] = SplitWord(argument);
    if (moment == L"on") {
        return signal.empty() ? std::nullopt
                              : std::make_optional(EventTiming{Moment::OnSignal, signal});
    }
    constexpr std::pair<std::wstring_view, Moment> moments[] = {
        {L"after", Moment::AfterReply},
        {L"before", Moment::BeforeReply},
        {L"never", Moment::Never},
        {L"twice", Moment::Twice},
    };
    for (const auto& [name, value] : moments) {
        if (moment == name) {
            return EventTiming{value, {}};
        }
    }
    return std::nullopt;
}

}  // namespace

Faults::Faults(std::wstring file, Journal& journal) : file_(std::move(file)), journal_(journal) {}

void Faults::Reload() {
    std::string content = ReadWholeFile(file_).value_or(std::string());
    if (content == content_) {
        return;
    }
    content_ = std::move(content);
    lines_.clear();
    std::wstring text = FromUtf8(content_);
    if (!text.empty() && text.front() == 0xFEFF) {
        text.erase(0, 1);
    }
    for (size_t start = 0; start < text.size();) {
        const size_t end = std::min(text.find(L'\n', start), text.size());
        const std::wstring line = Trim(std::wstring_view(text).substr(start, end - start));
        start = end + 1;
        if (line.empty() || line[0] == L'#') {
            continue;
        }
        std::optional<Line> fault = ReadLine(line);
        FaultPlan trial;
        if (fault && Apply(*fault, Command(), trial)) {
            lines_.push_back(std::move(*fault));
        } else {
            journal_.Note(L"fault not understood: " + line);
        }
    }
}

std::optional<Faults::Line> Faults::ReadLine(const std::wstring& text) {
    Line line;
    auto [selector, action] = SplitWord(text);
    std::tie(line.action, line.argument) = SplitWord(action);
    if (const size_t at = selector.rfind(L'@'); at != std::wstring::npos) {
        line.only = ToNumber(std::wstring_view(selector).substr(at + 1), 0);
        if (line.only < 1) {
            return std::nullopt;
        }
        selector.resize(at);
    }
    const size_t colon = selector.find(L':');
    line.call = selector.substr(0, colon);
    line.detail = colon == std::wstring::npos ? L"" : selector.substr(colon + 1);
    if (line.call.empty()) {
        return std::nullopt;
    }
    return line;
}

bool Faults::Matches(const Line& line, const Command& command) {
    if (line.call != L"*" && line.call != command.call) {
        return false;
    }
    if (line.detail.empty()) {
        return true;
    }
    constexpr std::wstring_view telling[] = {L"Macro", L"Command", L"Filename", L"Field",
                                             L"Window"};
    return command.text == line.detail ||
           std::any_of(std::begin(telling), std::end(telling), [&](std::wstring_view name) {
               return command.Argument(name) == line.detail;
           });
}

// Answers false when the action is unknown or its argument makes no sense.
bool Faults::Apply(const Line& line, const Command& command, FaultPlan& plan) {
    const std::wstring& action = line.action;
    const std::wstring& argument = line.argument;
    std::optional<Answer> answer;
    if (action == L"delay") {
        const long milliseconds = ToNumber(argument, -1);
        plan.delayMilliseconds = static_cast<DWORD>(std::max(milliseconds, 0L));
        return milliseconds >= 0;
    }
    if (action == L"raise") {
        const auto [name, rest] = SplitWord(argument);
        const auto [up, handle] = SplitWord(rest);
        plan.raises.push_back({name, up == L"1", ToNumber(handle, 0)});
        return !name.empty() && (up == L"0" || up == L"1");
    }
    if (action == L"event") {
        const std::optional<EventTiming> timing = ReadTiming(argument);
        plan.eventTiming = timing.value_or(plan.eventTiming);
        return timing.has_value();
    }
    if (action == L"ids") {
        plan.numericIds = true;
        return argument == L"numeric";
    }
    if (action == L"die") {
        plan.die = true;
        return true;
    }
    if (action == L"status") {
        const auto [digit, text] = SplitWord(argument);
        if (digit.size() != 1) {
            return false;
        }
        answer = Reply(command.call, digit[0], UnescapeLine(text));
    } else if (action == L"value") {
        answer = Success(command, UnescapeLine(argument));
    } else if (action == L"reply") {
        answer = Answer();
        answer->reply = UnescapeLine(argument);
    } else if (action == L"access-denied") {
        answer = Failed(E_ACCESSDENIED);
    } else if (action == L"hresult") {
        wchar_t* end = nullptr;
        answer = Failed(static_cast<HRESULT>(std::wcstoul(argument.c_str(), &end, 16)));
        if (argument.empty() || *end != L'\0' || SUCCEEDED(answer->result)) {
            return false;
        }
    } else if (action == L"exception") {
        const auto [number, texts] = SplitWord(argument);
        wchar_t* end = nullptr;
        const size_t bar = texts.find(L'|');
        answer = Answer();
        answer->kind = Answer::Kind::Exception;
        answer->number = static_cast<long>(std::wcstoll(number.c_str(), &end, 0));
        answer->source = texts.substr(0, bar);
        answer->description = bar == std::wstring::npos ? L"" : UnescapeLine(texts.substr(bar + 1));
        if (answer->number == 0 || *end != L'\0') {
            return false;
        }
    } else if (action == L"busy") {
        const long tries = ToNumber(argument, 0);
        if (tries < 1) {
            return false;
        }
        if (line.matches - std::max(line.only, 1L) < tries) {
            answer = Failed(RPC_E_SERVERCALL_RETRYLATER);
        }
    } else {
        return false;
    }
    if (answer && !plan.answer) {
        plan.answer = std::move(answer);
    }
    return true;
}

FaultPlan Faults::For(const Command& command) {
    Reload();
    FaultPlan plan;
    for (Line& line : lines_) {
        if (!Matches(line, command)) {
            continue;
        }
        ++line.matches;
        const bool due = line.only == 0 || line.matches == line.only ||
                         (line.action == L"busy" && line.matches > line.only);
        if (due) {
            Apply(line, command, plan);
        }
    }
    return plan;
}

}  // namespace practice
