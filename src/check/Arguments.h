#pragma once

#include <initializer_list>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

// A command line that is not understood; the text says why.
struct WrongUse {
    std::wstring text;
};

// The options of a command ("--json", "--last 10", "--last=10") and what stands beside them.
class Arguments {
public:
    struct Option {
        std::wstring_view name;  // with its "--"
        bool takesValue = false;
    };

    // Raises WrongUse for an option that is not among these, one without its value, and a value for
    // one that takes none. Behind "--" nothing is an option.
    Arguments(std::span<const std::wstring> given, std::initializer_list<Option> options);

    [[nodiscard]] bool Has(std::wstring_view option) const { return options_.contains(option); }
    // Of an option that stands there twice the last one counts.
    [[nodiscard]] std::optional<std::wstring> ValueOf(std::wstring_view option) const;
    // The whole number of an option; raises WrongUse when it is none from 0 to 999999999.
    [[nodiscard]] std::optional<long> NumberOf(std::wstring_view option) const;
    [[nodiscard]] const std::vector<std::wstring>& others() const { return others_; }
    // For commands that take nothing else.
    void RefuseOthers() const;

private:
    std::map<std::wstring, std::wstring, std::less<>> options_;
    std::vector<std::wstring> others_;
};

}  // namespace corvane
