#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace corvane {

// The status of a reply that is no more than that, in a text with nothing for an XML reader to trim
// and nothing to resolve but &amp; and its four like: as GoldMine answers most commands,
// <GMAPI call="Macro"><status code="1">2014.1</status></GMAPI> on one line. It is what an XML
// reader says of it, without one being loaded; of all other replies there is none here.
[[nodiscard]] std::optional<std::wstring> PlainStatus(std::wstring_view reply);

}  // namespace corvane
