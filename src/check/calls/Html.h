#pragma once

#include <string>
#include <string_view>

namespace corvane {

// A text as it stands in a page, between tags or between double quotes.
[[nodiscard]] std::wstring HtmlText(std::wstring_view text);

// A page in ASCII, every other character being a reference: no program can take it for another
// encoding.
[[nodiscard]] std::string AsciiPage(std::wstring_view page);

}  // namespace corvane
