#pragma once

#include <windows.h>

#include <utility>

namespace test_support {

// Closes a kernel handle; both of Windows' "no handle" values count as none.
class KernelHandle {
public:
    KernelHandle() = default;
    explicit KernelHandle(HANDLE handle) : handle_(handle) {}
    KernelHandle(KernelHandle&& source) noexcept
        : handle_(std::exchange(source.handle_, nullptr)) {}
    KernelHandle& operator=(KernelHandle&& source) noexcept {
        std::swap(handle_, source.handle_);
        return *this;
    }
    ~KernelHandle() {
        if (valid())
            CloseHandle(handle_);
    }

    bool valid() const { return handle_ && handle_ != INVALID_HANDLE_VALUE; }
    HANDLE get() const { return handle_; }

private:
    HANDLE handle_ = nullptr;
};

}  // namespace test_support
