#include "check/Arguments.h"

#include <algorithm>

#include "util/Text.h"

namespace corvane {

Arguments::Arguments(std::span<const std::wstring> given, std::initializer_list<Option> options) {
    bool onlyOthers = false;
    for (std::size_t i = 0; i < given.size(); ++i) {
        const std::wstring& text = given[i];
        if (onlyOthers || !text.starts_with(L"--")) {
            others_.push_back(text);
            continue;
        }
        if (text == L"--") {
            onlyOthers = true;
            continue;
        }
        const auto equals = text.find(L'=');
        const std::wstring name = text.substr(0, equals);
        const auto known = std::ranges::find(options, name, &Option::name);
        if (known == options.end())
            throw WrongUse{Join(L"There is no option ", name, L".")};
        const bool hasValue = equals != std::wstring::npos;
        if (hasValue && !known->takesValue)
            throw WrongUse{Join(name, L" takes no value.")};
        std::wstring& value = options_[name];
        if (hasValue) {
            value = text.substr(equals + 1);
        } else if (known->takesValue) {
            if (++i == given.size())
                throw WrongUse{Join(name, L" takes a value.")};
            value = given[i];
        }
    }
}

std::optional<std::wstring> Arguments::ValueOf(std::wstring_view option) const {
    const auto found = options_.find(option);
    return found == options_.end() ? std::nullopt : std::optional(found->second);
}

std::optional<long> Arguments::NumberOf(std::wstring_view option) const {
    const auto text = ValueOf(option);
    if (!text)
        return std::nullopt;
    constexpr std::size_t mostDigits = 9;
    if (text->empty() || text->size() > mostDigits ||
        text->find_first_not_of(L"0123456789") != std::wstring::npos) {
        throw WrongUse{Join(option, L" takes a whole number, not ", Quoted(*text), L".")};
    }
    return std::stol(*text);
}

void Arguments::RefuseOthers() const {
    if (!others_.empty())
        throw WrongUse{Join(L"Not understood: ", Quoted(others_.front()), L".")};
}

}  // namespace corvane
