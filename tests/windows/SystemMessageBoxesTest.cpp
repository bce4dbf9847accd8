#include "platform/SystemMessageBoxes.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "support/windows/NativeWindow.h"
#include "support/windows/ReplacedImport.h"
#include "support/windows/Waiting.h"

namespace corvane::test {
namespace {

using test_support::ClassOf;
using test_support::ReplacedImport;
using test_support::TextOf;
using test_support::WaitUntil;

// The visible box of this program with the product's name; nothing while there is none.
HWND FindBox() {
    HWND box = nullptr;
    while ((box = FindWindowExW(nullptr, box, L"#32770", L"Halvorn Corvane to 3CX"))) {
        DWORD process = 0;
        GetWindowThreadProcessId(box, &process);
        if (process == GetCurrentProcessId() && IsWindowVisible(box))
            return box;
    }
    return nullptr;
}

struct SeenBox {
    std::wstring text;
    std::vector<std::wstring> buttons;  // captions without mnemonics
    HICON icon = nullptr;
    HWND owner = nullptr;
    bool ownerEnabled = false;
};

// Reads a box and presses one of its buttons.
SeenBox ReadAndPress(HWND box, const std::wstring& caption) {
    SeenBox seen;
    seen.owner = GetWindow(box, GW_OWNER);
    seen.ownerEnabled = seen.owner && IsWindowEnabled(seen.owner);
    HWND pressed = nullptr;
    for (HWND child = GetWindow(box, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        if (!IsWindowVisible(child))
            continue;
        const auto style = static_cast<DWORD>(GetWindowLongPtrW(child, GWL_STYLE));
        if (ClassOf(child) == L"Button") {
            std::wstring text = TextOf(child);
            std::erase(text, L'&');
            if (text == caption)
                pressed = child;
            seen.buttons.push_back(text);
        } else if ((style & SS_TYPEMASK) == SS_ICON) {
            seen.icon = reinterpret_cast<HICON>(SendMessageW(child, STM_GETICON, 0, 0));
        } else if (std::wstring text = TextOf(child); !text.empty()) {
            seen.text = text;
        }
    }
    if (pressed)
        PostMessageW(pressed, BM_CLICK, 0, 0);
    else
        PostMessageW(box, WM_CLOSE, 0, 0);
    return seen;
}

struct FakeWindow final : ProgramWindow {
    [[nodiscard]] HWND handle() const override { return shown; }
    bool TranslateKey(MSG&) override { return false; }

    HWND shown = nullptr;
};

class SystemMessageBoxesTest : public testing::Test {
protected:
    // Shows a box while another thread looks at it and presses the button.
    BoxAnswer ShowAndPress(std::wstring_view text, BoxButtons buttons, BoxIcon icon,
                           const std::wstring& caption) {
        std::thread user([&] {
            EXPECT_TRUE(WaitUntil(&FindBox));
            if (const HWND box = FindBox())
                seen = ReadAndPress(box, caption);
        });
        const BoxAnswer answer = boxes.Show(text, buttons, icon);
        user.join();
        return answer;
    }

    FakeWindow window;
    SystemMessageBoxes boxes{StartedBy::Hand, &window};
    SeenBox seen;
};

TEST_F(SystemMessageBoxesTest, TextStandsInABoxTitledWithTheProductName) {
    const std::wstring text = L"First line\r\n\r\nSecond: \"quoted\" & J\x00FCrgen";
    EXPECT_EQ(ShowAndPress(text, BoxButtons::Ok, BoxIcon::None, L"OK"), BoxAnswer::Ok);
    EXPECT_EQ(seen.text, text);
    EXPECT_EQ(seen.buttons, (std::vector<std::wstring>{L"OK"}));
}

struct Press {
    BoxButtons buttons;
    const wchar_t* caption;
    BoxAnswer answer;
    std::vector<std::wstring> captions;
};

class SystemMessageBoxesPressTest : public SystemMessageBoxesTest,
                                    public testing::WithParamInterface<Press> {};

TEST_P(SystemMessageBoxesPressTest, PressedButtonIsTheAnswer) {
    EXPECT_EQ(ShowAndPress(L"?", GetParam().buttons, BoxIcon::None, GetParam().caption),
              GetParam().answer);
    EXPECT_EQ(seen.buttons, GetParam().captions);
}

INSTANTIATE_TEST_SUITE_P(
    Buttons, SystemMessageBoxesPressTest,
    testing::Values(
        Press{BoxButtons::Ok, L"OK", BoxAnswer::Ok, {L"OK"}},
        Press{BoxButtons::YesNo, L"Yes", BoxAnswer::Yes, {L"Yes", L"No"}},
        Press{BoxButtons::YesNo, L"No", BoxAnswer::No, {L"Yes", L"No"}},
        Press{BoxButtons::YesNoCancel, L"Yes", BoxAnswer::Yes, {L"Yes", L"No", L"Cancel"}},
        Press{BoxButtons::YesNoCancel, L"No", BoxAnswer::No, {L"Yes", L"No", L"Cancel"}},
        Press{BoxButtons::YesNoCancel, L"Cancel", BoxAnswer::Cancel, {L"Yes", L"No", L"Cancel"}}));

TEST_F(SystemMessageBoxesTest, IconIsTheNamedOneOrNone) {
    ShowAndPress(L"x", BoxButtons::Ok, BoxIcon::Critical, L"OK");
    EXPECT_EQ(seen.icon, LoadIconW(nullptr, IDI_ERROR));
    seen = {};
    ShowAndPress(L"x", BoxButtons::Ok, BoxIcon::Exclamation, L"OK");
    EXPECT_EQ(seen.icon, LoadIconW(nullptr, IDI_EXCLAMATION));
    seen = {};
    ShowAndPress(L"x", BoxButtons::Ok, BoxIcon::None, L"OK");
    EXPECT_EQ(seen.icon, nullptr);
}

TEST_F(SystemMessageBoxesTest, BoxHasNoOwnerUnlessOneIsShown) {
    ShowAndPress(L"x", BoxButtons::Ok, BoxIcon::None, L"OK");
    EXPECT_EQ(seen.owner, nullptr);
    boxes = SystemMessageBoxes(StartedBy::Hand);
    ShowAndPress(L"x", BoxButtons::Ok, BoxIcon::None, L"OK");
    EXPECT_EQ(seen.owner, nullptr);
}

// What the program asks Windows for: Wine 8 puts no box above all windows by its topmost flag.
UINT askedStyle = 0;

int WINAPI KeepAskedStyle(HWND, LPCWSTR, LPCWSTR, UINT style) {
    askedStyle = style;
    return IDOK;
}

TEST_F(SystemMessageBoxesTest, UnaskedBoxStandsAboveAllWindowsAndIsNotSystemModal) {
    // A system-modal box has an icon that is not the program's in its title.
    constexpr UINT modality = MB_SYSTEMMODAL | MB_TASKMODAL;
    const ReplacedImport replaced("MessageBoxW", &KeepAskedStyle);
    for (const HWND shown : {HWND{}, GetDesktopWindow()}) {
        window.shown = shown;
        SystemMessageBoxes(StartedBy::OtherProgram, &window).Notify(L"x", BoxIcon::Critical);
        EXPECT_EQ(askedStyle & (MB_TOPMOST | MB_SETFOREGROUND | modality),
                  UINT{MB_TOPMOST | MB_SETFOREGROUND});
        SystemMessageBoxes(StartedBy::Hand, &window).Notify(L"x", BoxIcon::Critical);
        EXPECT_EQ(askedStyle & (MB_TOPMOST | MB_SETFOREGROUND | modality), UINT{MB_SETFOREGROUND});
    }
}

std::vector<UINT> receivedByWindow;

LRESULT CALLBACK KeepReceived(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if ((message >= WM_KEYFIRST && message <= WM_KEYLAST) || message == WM_APP)
        receivedByWindow.push_back(message);
    return DefWindowProcW(window, message, wParam, lParam);
}

TEST_F(SystemMessageBoxesTest, KeysTypedBeforeAnUnaskedBoxGoNowhere) {
    const HWND typedInto = CreateWindowExW(0, L"Static", L"", WS_POPUP, 0, 0, 10, 10, nullptr,
                                           nullptr, GetModuleHandleW(nullptr), nullptr);
    ASSERT_NE(typedInto, nullptr);
    SetWindowLongPtrW(typedInto, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&KeepReceived));
    const std::vector<UINT> keys = {WM_KEYDOWN, WM_CHAR, WM_KEYUP, WM_SYSKEYDOWN, WM_SYSKEYUP};
    for (const StartedBy startedBy : {StartedBy::OtherProgram, StartedBy::Hand}) {
        receivedByWindow.clear();
        for (const UINT key : keys)
            PostMessageW(typedInto, key, VK_SPACE, 1);
        PostMessageW(typedInto, WM_APP, 0, 0);
        boxes = SystemMessageBoxes(startedBy, &window);

        ShowAndPress(L"x", BoxButtons::Ok, BoxIcon::None, L"OK");

        const bool byHand = startedBy == StartedBy::Hand;
        EXPECT_EQ(std::erase(receivedByWindow, UINT{WM_APP}), 1U) << "what is no key is served";
        EXPECT_EQ(receivedByWindow.empty(), !byHand);
    }
    DestroyWindow(typedInto);
}

TEST_F(SystemMessageBoxesTest, OwnerIsDisabledWhileItsBoxIsShown) {
    const HWND owner =
        CreateWindowExW(0, L"Static", L"owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300, 200,
                        nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    ASSERT_NE(owner, nullptr);
    window.shown = owner;

    ShowAndPress(L"x", BoxButtons::Ok, BoxIcon::None, L"OK");

    EXPECT_EQ(seen.owner, owner);
    EXPECT_FALSE(seen.ownerEnabled);
    EXPECT_TRUE(IsWindowEnabled(owner));
    DestroyWindow(owner);
}

TEST_F(SystemMessageBoxesTest, ConfirmIsTrueForYesAlone) {
    for (const auto& [caption, confirmed] : {std::pair(L"Yes", true), std::pair(L"No", false)}) {
        std::thread user([&, caption = caption] {
            EXPECT_TRUE(WaitUntil(&FindBox));
            if (const HWND box = FindBox())
                seen = ReadAndPress(box, caption);
        });
        EXPECT_EQ(boxes.Confirm(L"Sure?"), confirmed);
        user.join();
        EXPECT_EQ(seen.icon, nullptr);
    }
}

}  // namespace
}  // namespace corvane::test
