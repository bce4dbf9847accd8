#include "Keyboard.h"

#include <gtest/gtest.h>

#include <vector>

#include "support/windows/Waiting.h"

namespace end_to_end {

using namespace test_support;

void BringToForeground(HWND window) {
    EXPECT_TRUE(WaitUntil([&] {
        SetForegroundWindow(window);
        return GetForegroundWindow() == window;
    }));
}

void Press(std::initializer_list<WORD> keys) {
    std::vector<INPUT> strokes;
    for (const WORD key : keys) {
        INPUT stroke{};
        stroke.type = INPUT_KEYBOARD;
        stroke.ki.wVk = key;
        stroke.ki.wScan = static_cast<WORD>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC));
        strokes.push_back(stroke);
    }
    for (size_t pressed = keys.size(); pressed > 0; --pressed) {
        strokes.push_back(strokes[pressed - 1]);
        strokes.back().ki.dwFlags = KEYEVENTF_KEYUP;
    }
    const auto count = static_cast<UINT>(strokes.size());
    EXPECT_EQ(SendInput(count, strokes.data(), sizeof(INPUT)), count);
}

void TypeKeys(const std::string& characters) {
    for (const char character : characters)
        Press({static_cast<WORD>(character)});
}

}  // namespace end_to_end
