#include "check/wiring/Findings.h"

#include <utility>

#include "util/Text.h"

namespace corvane {

void Findings::Tell(Finding finding) {
    const std::scoped_lock lock(mutex_);
    told_.push_back(std::move(finding));
}

void Findings::Skip(std::wstring_view why) {
    const std::scoped_lock lock(mutex_);
    while (told_.size() < links_.size())
        told_.push_back({LinkState::NotChecked, std::wstring(why)});
}

std::vector<Findings::Told> Findings::All() const {
    const std::scoped_lock lock(mutex_);
    std::vector<Told> all;
    for (std::size_t i = 0; i < links_.size(); ++i) {
        const Link& link = links_[i];
        if (i < told_.size()) {
            all.push_back({link.name, told_[i]});
        } else if (i == told_.size()) {
            all.push_back(
                {link.name,
                 {LinkState::Broken, L"does not answer", std::wstring(link.whenItHangs)}});
        } else {
            all.push_back(
                {link.name,
                 {LinkState::NotChecked,
                  Join(L"the link ", Quoted(links_[told_.size()].name), L" does not answer")}});
        }
    }
    return all;
}

LinkState WorstOf(std::span<const Findings::Told> findings) {
    LinkState worst = LinkState::Ok;
    for (const Findings::Told& told : findings) {
        const LinkState state = told.finding.state;
        if (state != LinkState::NotChecked && state > worst)
            worst = state;
    }
    return worst;
}

}  // namespace corvane
