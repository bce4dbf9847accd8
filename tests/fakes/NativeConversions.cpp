// Text conversions for the native test build: what OLE Automation does in an English locale, as
// far as the program uses it. ConversionsTest holds both to the same answers.

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <optional>
#include <string>

#include "seams/Clock.h"
#include "seams/Conversions.h"
#include "util/RuntimeError.h"
#include "util/Text.h"

namespace corvane {

namespace {

std::optional<double> Number(std::wstring_view text) {
    const std::wstring trimmed(TrimBlanks(text));
    if (trimmed.empty() || trimmed.find_first_not_of(L"0123456789+-.,eE") != std::wstring::npos)
        return std::nullopt;
    std::wstring plain;
    for (const wchar_t character : trimmed) {
        if (character != L',')
            plain += character;  // thousands are separated
    }
    wchar_t* end = nullptr;
    const double value = std::wcstod(plain.c_str(), &end);
    if (end == plain.c_str() || *end != L'\0')
        return std::nullopt;
    return value;
}

template <class Whole>
Whole WholeNumber(std::wstring_view text) {
    const auto value = Number(text);
    if (!value)
        throw MakeRuntimeError(ErrorNumber::TypeMismatch);
    const double rounded = std::nearbyint(*value);  // halves go to the even number
    // The greatest 64-bit number is no double; the one above it is.
    if (rounded < static_cast<double>(std::numeric_limits<Whole>::min()) ||
        rounded >= static_cast<double>(std::numeric_limits<Whole>::max()) + (sizeof(Whole) < 8)) {
        throw MakeRuntimeError(ErrorNumber::Overflow);
    }
    return static_cast<Whole>(rounded);
}

std::wstring Lower(std::wstring_view text) {
    std::wstring lower(text);
    for (wchar_t& character : lower) {
        if (character >= L'A' && character <= L'Z')
            character += L'a' - L'A';
    }
    return lower;
}

std::wstring Printed(const char* format, double value) {
    std::array<char, 400> buffer{};
    std::snprintf(buffer.data(), buffer.size(), format, value);
    const std::string text = buffer.data();
    return {text.begin(), text.end()};
}

}  // namespace

std::int16_t IntegerFromText(std::wstring_view text) {
    return WholeNumber<std::int16_t>(text);
}

std::int32_t LongFromText(std::wstring_view text) {
    return WholeNumber<std::int32_t>(text);
}

std::int64_t LongLongFromText(std::wstring_view text) {
    return WholeNumber<std::int64_t>(text);
}

double DoubleFromText(std::wstring_view text) {
    const auto value = Number(text);
    if (!value)
        throw MakeRuntimeError(ErrorNumber::TypeMismatch);
    return *value;
}

bool BooleanFromText(std::wstring_view text) {
    const std::wstring lower = Lower(text);
    if (lower == L"true")
        return true;
    if (lower == L"false")
        return false;
    return DoubleFromText(text) != 0;
}

bool IsNumericText(std::wstring_view text) {
    return Number(text).has_value();
}

std::wstring TextFromDouble(double value) {
    return Printed("%.15g", value);
}

std::wstring_view TextFromBoolean(bool value) {
    return value ? L"True" : L"False";
}

// Digits fill the "#" places from the right; what is left over stands before the first place.
std::wstring FormatNumericText(std::wstring_view text, std::wstring_view format) {
    const auto value = Number(text);
    if (!value || format.empty())
        return std::wstring(text);
    // A text of digits keeps them all, also those that a double would round.
    const std::wstring_view trimmed = TrimBlanks(text);
    const bool digitsOnly = trimmed.find_first_not_of(L"0123456789") == std::wstring_view::npos;
    std::wstring digits = digitsOnly ? std::wstring(trimmed) : Printed("%.0f", *value);
    digits.erase(0, digits.find_first_not_of(L'0'));
    std::wstring reversed;
    const auto firstPlace = format.find(L'#');
    for (std::size_t at = format.size(); at-- > 0;) {
        if (format[at] != L'#') {
            reversed += format[at];
            continue;
        }
        if (!digits.empty()) {
            reversed += digits.back();
            digits.pop_back();
        }
        if (at == firstPlace) {
            reversed.append(digits.rbegin(), digits.rend());
            digits.clear();
        }
    }
    return {reversed.rbegin(), reversed.rend()};
}

std::wstring FormatSeconds(double seconds) {
    return Printed("%.3f", seconds);
}

std::wstring GeneralDateText(double automationDate) {
    const LocalTimeMs time = CalendarTime(automationDate);
    const std::wstring date = Join(std::to_wstring(time.month), L"/", std::to_wstring(time.day),
                                   L"/", std::to_wstring(time.year));
    if (time.hour == 0 && time.minute == 0 && time.second == 0)
        return date;
    const int hour = time.hour % 12 == 0 ? 12 : time.hour % 12;
    return Join(date, L" ", std::to_wstring(hour), L":", ZeroPadded(time.minute, 2), L":",
                ZeroPadded(time.second, 2), time.hour < 12 ? L" AM" : L" PM");
}

}  // namespace corvane
