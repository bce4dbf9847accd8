#pragma once

#include <mutex>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

enum class LinkState { Ok, Warning, Broken, NotChecked };

// One link of the chain from 3CX to GoldMine and back.
struct Link {
    std::wstring_view name;
    std::wstring_view whenItHangs;  // what to do when looking at it does not end
};

struct Finding {
    LinkState state = LinkState::Ok;
    std::wstring text;
    std::wstring fix = {};  // what to do about it
};

// The findings on some links, told one after the other on one thread and read on another.
class Findings {
public:
    explicit Findings(std::span<const Link> links) : links_(links) {}

    // Of the next link.
    void Tell(Finding finding);
    // None of the links that are left can be looked at.
    void Skip(std::wstring_view why);

    struct Told {
        std::wstring_view link;
        Finding finding;
    };
    // All that is known by now: a link that is being looked at hangs.
    [[nodiscard]] std::vector<Told> All() const;

private:
    std::span<const Link> links_;
    mutable std::mutex mutex_;
    std::vector<Finding> told_;
};

// The worst of them.
[[nodiscard]] LinkState WorstOf(std::span<const Findings::Told> findings);

}  // namespace corvane
