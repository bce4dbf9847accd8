#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <string_view>

namespace corvane {

// Stand-ins for numbers and names: the same for the same, so that calls can still be told apart,
// and no way back.
class Masking {
public:
    // "(###)###-##67" for a number, its form and length being kept; "~2" behind it tells it from
    // another that ends alike. Words among it are names.
    [[nodiscard]] std::wstring Number(std::wstring_view text);
    // A call identifier of 3CX says nothing of a person and stays, unless it looks like a number.
    [[nodiscard]] std::wstring CallIdentifier(std::wstring_view text);
    // Only folders and files that are the same on every computer keep their names.
    [[nodiscard]] std::wstring Path(std::wstring_view text);

private:
    [[nodiscard]] std::wstring Name(std::wstring_view text);  // "name-1"
    [[nodiscard]] std::wstring Digits(std::wstring_view text);
    [[nodiscard]] std::wstring FileName(std::wstring_view text);

    std::map<std::wstring, std::size_t> names_;
    std::map<std::wstring, std::size_t> numbers_;  // by their last digits
    std::map<std::wstring, std::size_t> endings_;  // how many numbers show these digits
    std::set<std::wstring, std::less<>> identifiers_;
};

}  // namespace corvane
