#include "ui/window/Dpi.h"

namespace corvane {

namespace {

constexpr int twipsPerInch = 1440;

// Functions of Windows 10 that older ones do not have.
template <class Function>
Function FromUser32(const char* name) {
    const HMODULE user32 = GetModuleHandleW(L"user32.dll");
    const FARPROC address = user32 ? GetProcAddress(user32, name) : nullptr;
    return reinterpret_cast<Function>(reinterpret_cast<void*>(address));
}

UINT SystemDpi() {
    const UniqueScreen screen(GetDC(nullptr));
    return static_cast<UINT>(GetDeviceCaps(screen.get(), LOGPIXELSY));
}

}  // namespace

UINT DpiOfWindow(HWND window) {
    using Function = UINT(WINAPI*)(HWND);
    static const auto getDpiForWindow = FromUser32<Function>("GetDpiForWindow");
    const UINT dpi = getDpiForWindow ? getDpiForWindow(window) : 0;
    return dpi ? dpi : SystemDpi();
}

int PixelsFromTwips(int twips, UINT dpi) {
    return MulDiv(twips, static_cast<int>(dpi), twipsPerInch);
}

UniqueFont CreateMessageFont(UINT dpi) {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof(metrics);
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0);
    LOGFONTW font = metrics.lfMessageFont;
    font.lfHeight = MulDiv(font.lfHeight, static_cast<int>(dpi), static_cast<int>(SystemDpi()));
    return UniqueFont(CreateFontIndirectW(&font));
}

}  // namespace corvane
