#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "platform/kit/Windows.h"

#include <oleauto.h>

namespace corvane {

// Owns a BSTR, the text type of OLE Automation.
class Bstr {
public:
    Bstr() = default;
    explicit Bstr(std::wstring_view text)
        : text_(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {}
    ~Bstr() { SysFreeString(text_); }
    Bstr(Bstr&& other) noexcept : text_(std::exchange(other.text_, nullptr)) {}
    Bstr& operator=(Bstr&& other) noexcept {
        std::swap(text_, other.text_);
        return *this;
    }
    Bstr(const Bstr&) = delete;
    Bstr& operator=(const Bstr&) = delete;

    [[nodiscard]] BSTR get() const { return text_; }
    // For functions that hand over a new BSTR; only on an empty one.
    [[nodiscard]] BSTR* put() { return &text_; }
    [[nodiscard]] BSTR release() { return std::exchange(text_, nullptr); }
    // An absent BSTR is an empty text.
    [[nodiscard]] std::wstring text() const {
        return text_ ? std::wstring(text_, SysStringLen(text_)) : std::wstring();
    }

private:
    BSTR text_ = nullptr;
};

// Owns a VARIANT.
class Variant {
public:
    Variant() { VariantInit(&value_); }
    explicit Variant(std::wstring_view text) : Variant() {
        value_.vt = VT_BSTR;
        value_.bstrVal = Bstr(text).release();
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
