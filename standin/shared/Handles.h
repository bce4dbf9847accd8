#pragma once

#include <windows.h>

#include <oleauto.h>

#include <memory>
#include <string_view>
#include <type_traits>
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

    [[nodiscard]] HANDLE get() const { return handle_; }
    explicit operator bool() const { return handle_ != nullptr; }

private:
    HANDLE handle_ = nullptr;
};

struct Closer {
    // Its procedure must no longer find the object that the window belongs to.
    void operator()(HWND window) const {
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        DestroyWindow(window);
    }
    void operator()(HFONT font) const { DeleteObject(font); }
    void operator()(HDC screen) const { ReleaseDC(nullptr, screen); }
    void operator()(LPWSTR* arguments) const { LocalFree(arguments); }
};

// Owns a window, a font, the screen's device context or a list of arguments.
template <typename Handle>
using Owned = std::unique_ptr<std::remove_pointer_t<Handle>, Closer>;

// Owns a BSTR.
class BString {
public:
    BString() = default;
    explicit BString(std::wstring_view text)
        : text_(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {}
    BString(const BString&) = delete;
    BString& operator=(const BString&) = delete;
    ~BString() { SysFreeString(text_); }

    [[nodiscard]] BSTR get() const { return text_; }
    BSTR* put() { return &text_; }
    BSTR release() { return std::exchange(text_, nullptr); }
    [[nodiscard]] std::wstring_view view() const { return {text_, SysStringLen(text_)}; }

private:
    BSTR text_ = nullptr;
};

}  // namespace practice
