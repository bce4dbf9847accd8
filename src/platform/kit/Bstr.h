#pragma once

#include <concepts>
#include <string>
#include <string_view>

#include "platform/kit/Handles.h"
#include "util/RuntimeError.h"

#include <oleauto.h>

namespace corvane {

// Owns a BSTR, the text type of OLE Automation. One that cannot be had raises error 7.
class Bstr : public Unique<BSTR, &SysFreeString> {
public:
    Bstr() = default;
    explicit Bstr(std::wstring_view text)
        : Unique(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {
        if (!*this)
            throw MakeRuntimeError(ErrorNumber::OutOfMemory);
    }

    // An absent BSTR is an empty text.
    [[nodiscard]] static std::wstring TextOf(BSTR text) {
        return text ? std::wstring(text, SysStringLen(text)) : std::wstring();
    }
    [[nodiscard]] std::wstring text() const { return TextOf(get()); }
};

// Owns a VARIANT.
class Variant {
public:
    Variant() { VariantInit(&value_); }
    explicit Variant(std::wstring_view text) : Variant() {
        value_.vt = VT_BSTR;
        value_.bstrVal = Bstr(text).release();
    }
    // Nothing but a bool: every pointer would turn into one.
    explicit Variant(std::same_as<bool> auto truth) : Variant() {
        value_.vt = VT_BOOL;
        value_.boolVal = truth ? VARIANT_TRUE : VARIANT_FALSE;
    }
    explicit Variant(double number) : Variant() {
        value_.vt = VT_R8;
        value_.dblVal = number;
    }
    ~Variant() { VariantClear(&value_); }
    Variant(const Variant&) = delete;
    Variant& operator=(const Variant&) = delete;

    [[nodiscard]] VARIANT* get() { return &value_; }
    [[nodiscard]] VARIANT* operator->() { return &value_; }

private:
    VARIANT value_;
};

}  // namespace corvane
