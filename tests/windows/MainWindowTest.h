#pragma once

#include "ui/window/MainWindow.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/kit/ComApartment.h"
#include "support/windows/NativeWindow.h"
#include "support/windows/Waiting.h"
#include "ui/form/Form.h"
#include "ui/form/FormActions.h"

#include <commctrl.h>

namespace corvane::test {

using test_support::ClassOf;
using test_support::patience;
using test_support::PumpUntil;
using test_support::TextOf;

// Does to the form what the program does, and keeps what it was told.
class RecordedActions final : public FormActions {
public:
    void ButtonClicked(CommandButton& button) override {
        told.push_back(L"button " + button.name());
        if (button.name() == L"cmdParams" && form)
            form->ToggleParams();
        if (onButton)
            onButton();
    }
    void CheckBoxClicked(CheckBox& box) override {
        told.push_back(L"check " + box.name());
        box.setChecked(!box.checked());
    }
    void OptionClicked(OptionButton& option) override {
        told.push_back(L"option " + option.name());
        option.setSelected(true);
    }
    bool MayLeave(TextBox& box, bool changed) override {
        told.push_back(L"leave " + box.name() + (changed ? L" changed" : L" unchanged"));
        if (onLeave)
            onLeave();
        return mayLeave;
    }
    void Activated(bool fromAnotherProgram) override {
        ++activations;
        arrivals += fromAnotherProgram ? 1 : 0;
    }
    bool MayClose() override {
        ++closeQuestions;
        if (onClose)
            onClose();
        return mayClose;
    }

    Form* form = nullptr;
    std::vector<std::wstring> told;
    std::function<void()> onButton;
    std::function<void()> onLeave;
    std::function<void()> onClose;
    bool mayLeave = true;
    bool mayClose = true;
    int activations = 0;
    int arrivals = 0;  // of these, from another program
    int closeQuestions = 0;
};

using NativeControls = std::multimap<int, HWND>;

inline BOOL CALLBACK AddNative(HWND window, LPARAM found) {
    reinterpret_cast<NativeControls*>(found)->emplace(GetDlgCtrlID(window), window);
    return TRUE;
}

class MainWindowTest : public testing::Test {
protected:
    MainWindowTest() {
        actions.form = &form;
        window->Attach(form, actions);
    }
    ~MainWindowTest() override {
        window.reset();
        // A window that ended asks its loop to end: the next test has its own.
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        }
    }

    static void PumpWhatIsPending() {
        int rounds = 0;
        static_cast<void>(PumpUntil([&rounds] { return ++rounds > 10; }));
    }

    void Show() {
        form.setVisible(true);
        ASSERT_NE(window->handle(), nullptr);
        ASSERT_TRUE(PumpUntil([this] { return actions.activations > 0; }));
    }
    [[nodiscard]] HWND Native(const Control& control) const {
        if (natives_.empty())
            EnumChildWindows(window->handle(), &AddNative, reinterpret_cast<LPARAM>(&natives_));
        const int id = 1001 + static_cast<int>(control.row());
        EXPECT_EQ(natives_.count(id), 1U) << id;
        const auto found = natives_.find(id);
        return found == natives_.end() ? nullptr : found->second;
    }
    void Click(const Control& control) const { SendMessageW(Native(control), BM_CLICK, 0, 0); }
    void Type(const Control& control, const std::wstring& text) const {
        for (const wchar_t character : text)
            SendMessageW(Native(control), WM_CHAR, character, 1);
    }
    void ClickTab(const Control& strip, int tab) const {
        RECT place{};
        SendMessageW(Native(strip), TCM_GETITEMRECT, static_cast<WPARAM>(tab),
                     reinterpret_cast<LPARAM>(&place));
        const LPARAM point =
            MAKELPARAM((place.left + place.right) / 2, (place.top + place.bottom) / 2);
        SendMessageW(Native(strip), WM_LBUTTONDOWN, MK_LBUTTON, point);
        SendMessageW(Native(strip), WM_LBUTTONUP, 0, point);
    }
    // Keys reach the dialog keyboard only through the window's own loop; the window has to close.
    void PressInLoop(HWND focused, WPARAM key) {
        SetFocus(focused);
        PostMessageW(focused, WM_KEYDOWN, key, 1);
        SetTimer(window->handle(), 1, patience, &MainWindowTest::GiveUp);
        window->RunMessageLoop();
    }
    static void CALLBACK GiveUp(HWND window, UINT, UINT_PTR, DWORD) {
        ADD_FAILURE() << "the key did nothing";
        DestroyWindow(window);
    }
    static LRESULT CheckState(HWND window) { return SendMessageW(window, BM_GETCHECK, 0, 0); }

    ComWhenNeeded com;
    std::unique_ptr<MainWindow> window =
        std::make_unique<MainWindow>(GetModuleHandleW(nullptr), com);
    Form form{window.get()};
    RecordedActions actions;

private:
    mutable NativeControls natives_;  // looked up once: the window never makes others
};

}  // namespace corvane::test
