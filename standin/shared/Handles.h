#pragma once

#include <windows.h>

#include <oleauto.h>

#include <string_view>
#include <utility>

namespace practice {

// Owns a kernel handle; both nullptr and INVALID_HANDLE_VALUE mean that there is none.
class KernelHandle {
public:
    KernelHandle() = default;
    explicit KernelHandle(HANDLE handle)
        : handle_(handle == INVALID_HANDLE_VALUE ? nullptr : handle) {}
    KernelHandle(KernelHandle&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    KernelHandle& operator=(KernelHandle&& other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }
    ~KernelHandle() {
        if (handle_)
            CloseHandle(handle_);
    }

    HANDLE get() const { return handle_; }
    explicit operator bool() const { return handle_ != nullptr; }

private:
    HANDLE handle_ = nullptr;
};

// Owns a BSTR.
class BString {
public:
    BString() = default;
    explicit BString(std::wstring_view text)
        : text_(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {}
    BString(const BString&) = delete;
    BString& operator=(const BString&) = delete;
    ~BString() { SysFreeString(text_); }

    BSTR get() const { return text_; }
    BSTR* put() { return &text_; }
    BSTR release() { return std::exchange(text_, nullptr); }
    std::wstring_view view() const {
        return text_ ? std::wstring_view(text_, SysStringLen(text_)) : std::wstring_view();
    }

private:
    BSTR text_ = nullptr;
};

}  // namespace practice
