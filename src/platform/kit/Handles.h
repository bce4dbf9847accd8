#pragma once

#include <utility>

#include "platform/kit/Windows.h"

namespace corvane {

// Owns what Windows hands out to be closed, and closes it once. Windows says "none" by null or by
// INVALID_HANDLE_VALUE; both are null here, and neither is closed.
template <class Handle, auto close>
class Unique {
public:
    Unique() = default;
    explicit Unique(Handle handle)
        : handle_(handle == static_cast<Handle>(INVALID_HANDLE_VALUE) ? nullptr : handle) {}
    ~Unique() {
        if (handle_)
            close(handle_);
    }
    Unique(Unique&& other) noexcept : handle_(other.release()) {}
    Unique& operator=(Unique&& other) noexcept {
        const Unique former(std::exchange(handle_, other.release()));
        return *this;
    }

    explicit operator bool() const { return handle_ != nullptr; }
    [[nodiscard]] Handle get() const { return handle_; }
    [[nodiscard]] Handle release() { return std::exchange(handle_, nullptr); }
    // For functions that hand over a new one; only while there is none.
    [[nodiscard]] Handle* put() { return &handle_; }

private:
    Handle handle_ = nullptr;
};

inline void CloseClipboardOf(HWND) {
    CloseClipboard();
}
inline void ReleaseScreen(HDC device) {
    ReleaseDC(nullptr, device);
}

using UniqueHandle = Unique<HANDLE, &CloseHandle>;  // of the kernel: file, event, mutex, process
using UniqueFind = Unique<HANDLE, &FindClose>;
using UniqueMutexHold = Unique<HANDLE, &ReleaseMutex>;  // a mutex that the thread holds
using UniqueRegistryKey = Unique<HKEY, &RegCloseKey>;
using UniqueFont = Unique<HFONT, &DeleteObject>;
using UniqueRegion = Unique<HRGN, &DeleteObject>;
using UniqueScreen = Unique<HDC, &ReleaseScreen>;         // of GetDC(nullptr)
using UniqueClipboard = Unique<HWND, &CloseClipboardOf>;  // the window that has it open
using UniqueGlobalLock = Unique<HGLOBAL, &GlobalUnlock>;  // the memory, not its address
using UniqueLocalMemory = Unique<HLOCAL, &LocalFree>;

}  // namespace corvane
