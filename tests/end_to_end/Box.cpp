#include "Box.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <ostream>

#include "support/windows/Encoding.h"
#include "support/windows/NativeWindow.h"
#include "support/windows/Waiting.h"

namespace end_to_end {

using namespace test_support;

namespace {

constexpr wchar_t dialogClass[] = L"#32770";
constexpr int iconSide = 32;

const std::map<std::string, int> buttonIds = {
    {"OK", IDOK}, {"Cancel", IDCANCEL}, {"Yes", IDYES}, {"No", IDNO}};

struct KnownIcon {
    const char* name;
    const wchar_t* resource;
};
const KnownIcon knownIcons[] = {{"critical", IDI_HAND},
                                {"exclamation", IDI_EXCLAMATION},
                                {"question", IDI_QUESTION},
                                {"information", IDI_ASTERISK}};

// A picture in memory, one 32-bit pixel after the other.
class Picture {
public:
    Picture() : device_(CreateCompatibleDC(nullptr)) {
        BITMAPINFO format{};
        format.bmiHeader.biSize = sizeof format.bmiHeader;
        format.bmiHeader.biWidth = iconSide;
        format.bmiHeader.biHeight = -iconSide;
        format.bmiHeader.biPlanes = 1;
        format.bmiHeader.biBitCount = 32;
        void* bits = nullptr;
        bitmap_ = CreateDIBSection(device_, &format, DIB_RGB_COLORS, &bits, nullptr, 0);
        pixels_ = static_cast<const std::uint8_t*>(bits);
        former_ = SelectObject(device_, bitmap_);
    }
    Picture(const Picture&) = delete;
    Picture& operator=(const Picture&) = delete;
    ~Picture() {
        SelectObject(device_, former_);
        DeleteObject(bitmap_);
        DeleteDC(device_);
    }

    void TakeFromScreen(POINT at) {
        const HDC screen = GetDC(nullptr);
        BitBlt(device_, 0, 0, iconSide, iconSide, screen, at.x, at.y, SRCCOPY);
        ReleaseDC(nullptr, screen);
        GdiFlush();
    }

    void Draw(const wchar_t* icon, COLORREF background) {
        const RECT all{0, 0, iconSide, iconSide};
        const HBRUSH brush = CreateSolidBrush(background);
        FillRect(device_, &all, brush);
        DeleteObject(brush);
        DrawIconEx(device_, 0, 0, LoadIconW(nullptr, icon), iconSide, iconSide, 0, nullptr,
                   DI_NORMAL);
        GdiFlush();
    }

    COLORREF corner() const { return RGB(pixels_[2], pixels_[1], pixels_[0]); }

    // The average difference of a colour part, 0 to 255.
    int DistanceTo(const Picture& other) const {
        int sum = 0;
        for (int pixel = 0; pixel < iconSide * iconSide; ++pixel) {
            for (int part = 0; part < 3; ++part) {
                const int at = pixel * 4 + part;
                sum += std::abs(int{pixels_[at]} - int{other.pixels_[at]});
            }
        }
        return sum / (iconSide * iconSide * 3);
    }

private:
    HDC device_;
    HBITMAP bitmap_ = nullptr;
    const std::uint8_t* pixels_ = nullptr;
    HGDIOBJ former_ = nullptr;
};

// The icon whose picture stands on the screen there, once it is painted.
std::string IconOnScreen(HWND control) {
    constexpr int likeness = 12;
    std::string name = "unknown";
    // What looks like none of them is no failure here.
    static_cast<void>(WaitUntil([&] {
        RECT place{};
        GetWindowRect(control, &place);
        Picture seen;
        seen.TakeFromScreen({place.left, place.top});
        int best = likeness;
        for (const KnownIcon& icon : knownIcons) {
            Picture drawn;
            drawn.Draw(icon.resource, seen.corner());
            if (const int distance = drawn.DistanceTo(seen); distance < best) {
                best = distance;
                name = icon.name;
            }
        }
        return name != "unknown";
    }));
    return name;
}

bool HoldsIcon(HWND control) {
    const auto style = static_cast<DWORD>(GetWindowLongW(control, GWL_STYLE));
    DWORD_PTR icon = 0;
    return (style & SS_TYPEMASK) == SS_ICON &&
           SendMessageTimeoutW(control, STM_GETICON, 0, 0, SMTO_NORMAL, patience, &icon) != 0 &&
           icon != 0;
}

}  // namespace

void PrintTo(const Box& box, std::ostream* stream) {
    *stream << '"' << box.title << "\" [" << box.buttons << "] icon " << box.icon << ": "
            << testing::PrintToString(box.text);
}

HWND FindBox(DWORD processId) {
    HWND found = nullptr;
    ForEachWindow(processId, [&](HWND window) {
        if (IsWindowVisible(window) && ClassOf(window) == dialogClass)
            found = window;
        return !found;
    });
    return found;
}

Box ReadBox(HWND window) {
    Box box;
    box.title = Utf8(TextOf(window));
    std::map<LONG, std::string> buttons;  // by their left edge
    ForEachChild(window, [&](HWND child) {
        const std::wstring className = ClassOf(child);
        if (!IsWindowVisible(child))
            return true;
        if (className == L"Button") {
            RECT place{};
            GetWindowRect(child, &place);
            const int id = GetDlgCtrlID(child);
            const auto known =
                std::find_if(buttonIds.begin(), buttonIds.end(),
                             [&](const auto& button) { return button.second == id; });
            buttons[place.left] =
                known == buttonIds.end() ? "button " + std::to_string(id) : known->first;
        } else if (className == L"Static" && HoldsIcon(child)) {
            box.icon = IconOnScreen(child);
        } else if (className == L"Static") {
            box.text += Utf8(TextOf(child));
        }
        return true;
    });
    box.buttons.clear();
    for (const auto& [left, caption] : buttons)
        box.buttons += (box.buttons.empty() ? "" : " ") + caption;
    return box;
}

void AnswerBox(HWND box, const std::string& answer) {
    const auto button = buttonIds.find(answer);
    ASSERT_NE(button, buttonIds.end()) << answer;
    PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(button->second), 0);
    EXPECT_TRUE(WaitUntil([&] { return !IsWindowVisible(box); })) << "the box stays";
}

}  // namespace end_to_end
