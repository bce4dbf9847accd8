#include <string>

#include "platform/kit/Bstr.h"
#include "platform/kit/ComError.h"
#include "seams/Conversions.h"
#include "util/Text.h"

namespace corvane {

namespace {

template <class Value, class Convert>
HRESULT TryConvert(std::wstring_view text, Value& value, Convert convert) {
    const Bstr source(text);
    // An empty text is no number: some systems would take it for 0.
    if (text.empty())
        return DISP_E_TYPEMISMATCH;
    return convert(source.get(), LOCALE_USER_DEFAULT, 0, &value);
}

template <class Value, class Convert>
Value ConvertOrThrow(std::wstring_view text, Convert convert) {
    Value value{};
    ThrowIfFailed(TryConvert(text, value, convert));
    return value;
}

std::wstring Format(VARIANT* value, std::wstring_view format) {
    std::wstring formatText(format);
    Bstr result;
    ThrowIfFailed(VarFormat(value, formatText.data(), 0, 0, 0, result.put()));
    return result.text();
}

}  // namespace

std::int16_t IntegerFromText(std::wstring_view text) {
    return ConvertOrThrow<SHORT>(text, &VarI2FromStr);
}

std::int32_t LongFromText(std::wstring_view text) {
    return ConvertOrThrow<LONG>(text, &VarI4FromStr);
}

std::int64_t LongLongFromText(std::wstring_view text) {
    return ConvertOrThrow<LONG64>(text, &VarI8FromStr);
}

double DoubleFromText(std::wstring_view text) {
    return ConvertOrThrow<DOUBLE>(text, &VarR8FromStr);
}

bool BooleanFromText(std::wstring_view text) {
    return ConvertOrThrow<VARIANT_BOOL>(text, &VarBoolFromStr) != VARIANT_FALSE;
}

bool IsNumericText(std::wstring_view text) {
    DOUBLE value = 0;
    return SUCCEEDED(TryConvert(text, value, &VarR8FromStr));
}

std::wstring TextFromDouble(double value) {
    Bstr text;
    ThrowIfFailed(VarBstrFromR8(value, LOCALE_USER_DEFAULT, 0, text.put()));
    return text.text();
}

std::wstring_view TextFromBoolean(bool value) {
    return value ? L"True" : L"False";
}

std::wstring FormatNumericText(std::wstring_view text, std::wstring_view format) {
    if (!IsNumericText(text))
        return std::wstring(text);
    Variant value(text);
    return Format(value.get(), format);
}

std::wstring FormatSeconds(double seconds) {
    Variant value(seconds);
    return Format(value.get(), L"0.000");
}

std::wstring GeneralDateText(double automationDate) {
    Bstr text;
    ThrowIfFailed(VarBstrFromDate(automationDate, LOCALE_USER_DEFAULT, 0, text.put()));
    return text.text();
}

}  // namespace corvane
