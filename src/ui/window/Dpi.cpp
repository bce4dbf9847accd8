#include "ui/window/Dpi.h"

#include "platform/kit/SystemLibraries.h"

namespace corvane {

namespace {

constexpr int twipsPerInch = 1440;

UINT SystemDpi() {
    const UniqueScreen screen(GetDC(nullptr));
    return static_cast<UINT>(GetDeviceCaps(screen.get(), LOGPIXELSY));
}

}  // namespace

UINT DpiOfWindow(HWND window) {
    using Function = UINT(WINAPI*)(HWND);
    // Windows 10 has it, older ones do not.
    static const auto getDpiForWindow = SystemFunction<Function>(L"user32.dll", "GetDpiForWindow");
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
