#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// Text conversions in the user's locale, as users' existing settings were written. In the program
// they are OLE Automation's; the native test build supplies its own, checked by the same tests.
// A text that does not convert raises error 13, one that does not fit raises error 6.
namespace corvane {

[[nodiscard]] std::int16_t IntegerFromText(std::wstring_view text);
[[nodiscard]] std::int32_t LongFromText(std::wstring_view text);
[[nodiscard]] std::int64_t LongLongFromText(std::wstring_view text);
[[nodiscard]] double DoubleFromText(std::wstring_view text);
// "True" and "False" in any letter case, or a number (0 is false).
[[nodiscard]] bool BooleanFromText(std::wstring_view text);

// Whether DoubleFromText would take it.
[[nodiscard]] bool IsNumericText(std::wstring_view text);

[[nodiscard]] std::wstring TextFromDouble(double value);
[[nodiscard]] std::wstring_view TextFromBoolean(bool value);  // "True" or "False"

// Lays a numeric text into a "#"-placeholder format; any other text comes back unchanged.
[[nodiscard]] std::wstring FormatNumericText(std::wstring_view text, std::wstring_view format);

// Seconds with three decimals, the decimal sign being the user's.
[[nodiscard]] std::wstring FormatSeconds(double seconds);

// An automation date (days since 1899-12-30, local time) in the locale's general form.
[[nodiscard]] std::wstring GeneralDateText(double automationDate);

}  // namespace corvane
