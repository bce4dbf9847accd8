#include "faults/Faults.h"

#include <algorithm>
#include <utility>

#include "shared/Files.h"
#include "shared/Text.h"

namespace practice {
namespace {

// Puts into the plan what a fault wants of the command.
struct Planner {
    const Command& command;
    FaultPlan& plan;

    void operator()(const Delay& delay) const { plan.delayMilliseconds = delay.milliseconds; }
    void operator()(const RaisedEvent& event) const { plan.raises.push_back(event); }
    void operator()(const EventTiming& timing) const { plan.eventTiming = timing; }
    void operator()(NumericIds) const { plan.numericIds = true; }
    void operator()(Die death) const { plan.death = death; }
    void operator()(const RenamedReply& reply) const { plan.replyCall = reply.call; }
    void operator()(Padding padding) const { plan.padding = padding.letters; }
    void operator()(const Status& status) const {
        (*this)(Reply(command.call, status.digit, status.text));
    }
    void operator()(Busy) const { (*this)(FailedCall(RPC_E_SERVERCALL_RETRYLATER)); }
    void operator()(const Answer& answer) const {
        if (!plan.answer)
            plan.answer = answer;
    }
};

}  // namespace

void FaultPlan::Alter(std::wstring& reply) const {
    if (!replyCall.empty()) {
        const std::size_t begin = reply.find(L'"') + 1;
        reply.replace(begin, reply.find(L'"', begin) - begin, replyCall);
    }
    reply.insert(reply.find(L"</status>"), padding, L'x');
}

Faults::Faults(std::wstring file, Journal& journal) : file_(std::move(file)), journal_(journal) {}

FaultPlan Faults::For(const Command& command) {
    Reload();
    FaultPlan plan;
    for (auto& [fault, matches] : faults_) {
        if (fault.Matches(command) && ++matches >= fault.first && matches <= fault.last)
            std::visit(Planner{command, plan}, fault.action);
    }
    return plan;
}

void Faults::Reload() {
    std::string content = ReadWholeFile(file_).value_or(std::string());
    if (content == content_)
        return;
    content_ = std::move(content);
    faults_.clear();
    std::wstring text = FromUtf8(content_);
    if (!text.empty() && text.front() == 0xFEFF)
        text.erase(0, 1);
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find(L'\n', start), text.size());
        const std::wstring line = Trim(std::wstring_view(text).substr(start, end - start));
        start = end + 1;
        if (line.empty() || line[0] == L'#')
            continue;
        if (std::optional<Fault> fault = ReadFault(line))
            faults_.push_back({std::move(*fault)});
        else
            journal_.Note(L"fault not understood: " + line);
    }
}

}  // namespace practice
