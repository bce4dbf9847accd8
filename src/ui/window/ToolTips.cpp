#include "ui/window/ToolTips.h"

#include <commctrl.h>

namespace corvane {

namespace {

// As long as the system lets it stand: the longer texts take their time to be read.
constexpr LPARAM standsMilliseconds = 30'000;

TTTOOLINFOW ToolOf(HWND owner, UINT_PTR id, UINT flags) {
    TTTOOLINFOW tool{};
    tool.cbSize = sizeof(tool);
    tool.uFlags = flags;
    tool.hwnd = owner;
    tool.uId = id;
    return tool;
}

LRESULT Tell(HWND tips, UINT message, const TTTOOLINFOW& tool) {
    return SendMessageW(tips, message, 0, reinterpret_cast<LPARAM>(&tool));
}

}  // namespace

void ToolTips::Create(HWND window) {
    window_ = window;
    tips_ = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                            WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP, 0, 0, 0, 0, window, nullptr,
                            nullptr, nullptr);
    SendMessageW(tips_, TTM_SETDELAYTIME, TTDT_AUTOPOP, standsMilliseconds);
}

void ToolTips::SetMaximumWidth(int pixels) const {
    SendMessageW(tips_, TTM_SETMAXTIPWIDTH, 0, pixels);
}

// A control gets its tool when it has its first tip; most never have one.
void ToolTips::Set(HWND control, const std::wstring& text) const {
    TTTOOLINFOW tool =
        ToolOf(window_, reinterpret_cast<UINT_PTR>(control), TTF_SUBCLASS | TTF_IDISHWND);
    const bool known = Tell(tips_, TTM_GETTOOLINFOW, tool) != FALSE;
    std::wstring shown = text;
    tool.lpszText = shown.data();
    Tell(tips_, known ? TTM_UPDATETIPTEXTW : TTM_ADDTOOLW, tool);
}

void ToolTips::ShowOver(HWND disabled, const std::wstring& text, const MSG& received) {
    if (disabled != disabled_ || received.hwnd != beneath_) {
        if (disabled_)
            Tell(tips_, TTM_DELTOOLW, ToolOf(beneath_, 0, 0));
        disabled_ = disabled;
        beneath_ = received.hwnd;
        if (disabled) {
            TTTOOLINFOW tool = ToolOf(beneath_, 0, 0);
            GetWindowRect(disabled, &tool.rect);
            MapWindowPoints(nullptr, beneath_, reinterpret_cast<POINT*>(&tool.rect), 2);
            std::wstring shown = text;
            tool.lpszText = shown.data();
            Tell(tips_, TTM_ADDTOOLW, tool);
        }
    }
    if (disabled)
        SendMessageW(tips_, TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(&received));
}

}  // namespace corvane
