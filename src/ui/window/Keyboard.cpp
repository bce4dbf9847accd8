#include "ui/window/Keyboard.h"

#include <algorithm>
#include <vector>

#include "ui/form/FormActions.h"
#include "ui/window/BoxVisit.h"

#include <commctrl.h>

namespace corvane {

namespace {

bool IsDown(int key) {
    return GetKeyState(key) < 0;
}

}  // namespace

bool Keyboard::Translate(MSG& message) {
    return OnKey(message) || IsDialogMessageW(controls_.window(), &message);
}

bool Keyboard::OnKey(const MSG& message) {
    if (message.message != WM_KEYDOWN)
        return false;
    // With Alt it is the AltGr key, which types a character.
    if (IsDown(VK_CONTROL))
        return !IsDown(VK_MENU) && OnControlKey(message);
    return OnArrow(message) || OnKeyInManyLines(message);
}

// Round the usable members of the group, which need not stand side by side in the window.
bool Keyboard::OnArrow(const MSG& message) {
    const bool back = message.wParam == VK_LEFT || message.wParam == VK_UP;
    if (!back && message.wParam != VK_RIGHT && message.wParam != VK_DOWN)
        return false;
    const Control* from = controls_.ControlOf(message.hwnd);
    if (!from || from->spec().kind != ControlKind::OptionButton)
        return false;
    std::vector<OptionButton*> members = form_.GroupOf(static_cast<const OptionButton&>(*from));
    if (back)
        std::reverse(members.begin(), members.end());
    std::rotate(members.begin(), std::find(members.begin(), members.end(), from), members.end());
    const auto next = std::find_if(members.begin() + 1, members.end(),
                                   [](const OptionButton* member) { return member->enabled(); });
    if (next == members.end() || !visit_.Leave())
        return true;
    actions_.OptionClicked(**next);
    SetFocus(controls_.of(**next));
    return true;
}

// A box of many lines would keep these keys for itself.
bool Keyboard::OnKeyInManyLines(const MSG& message) {
    const TextBox* box = controls_.TextBoxOf(message.hwnd);
    if (!box || !box->spec().has(ControlTrait::multiLine))
        return false;
    if (message.wParam == VK_TAB)
        SetFocus(GetNextDlgTabItem(controls_.window(), message.hwnd, IsDown(VK_SHIFT)));
    else if (message.wParam == VK_ESCAPE)
        SendMessageW(controls_.window(), WM_COMMAND, IDCANCEL, 0);
    else
        return false;
    return true;
}

bool Keyboard::OnControlKey(const MSG& message) {
    switch (message.wParam) {
        case VK_TAB:
            StepThroughTabs(message.hwnd, IsDown(VK_SHIFT) ? -1 : 1);
            return true;
        case VK_PRIOR:
            StepThroughTabs(message.hwnd, -1);
            return true;
        case VK_NEXT:
            StepThroughTabs(message.hwnd, 1);
            return true;
        case 'A':
            if (!controls_.TextBoxOf(message.hwnd))
                return false;
            SendMessageW(message.hwnd, EM_SETSEL, 0, -1);
            return true;
        default:
            return false;
    }
}

// From the last tab to the first and back.
void Keyboard::StepThroughTabs(HWND focused, int step) {
    TabStrip& strip = StripBeside(focused);
    if (!strip.enabled())
        return;
    const auto count = static_cast<int>(SendMessageW(controls_.of(strip), TCM_GETITEMCOUNT, 0, 0));
    form_.SelectTab(strip, (strip.selectedTab() + step + count) % count);
}

// The strip whose pages hold the control, or that it is itself.
TabStrip& Keyboard::StripBeside(HWND native) const {
    for (; native && native != controls_.window(); native = GetParent(native)) {
        const Control* control = controls_.ControlOf(native);
        if (control == &form_.tabstripParams ||
            (control && control->spec().name == Form::FramesOf(form_.tabstripParams))) {
            return form_.tabstripParams;
        }
    }
    return form_.tabstripOptions;
}

// Enter presses the button that has the focus, else the default button while it can be pressed.
LRESULT Keyboard::DefaultButton() const {
    const Control* button = controls_.ControlOf(GetFocus());
    if (!button || button->spec().kind != ControlKind::CommandButton)
        button = &form_.cmdProcessCall;
    return button->enabled() ? MAKELRESULT(ControlId(button->row()), DC_HASDEFID) : 0;
}

// A hidden or disabled control cannot be left by the keyboard.
void Keyboard::KeepFocusUsable(const Control& changed, HWND before) const {
    const HWND window = controls_.window();
    if (!IsChild(window, before) || (IsWindowVisible(before) && IsWindowEnabled(before)))
        return;
    const bool isPage = changed.spec().kind == ControlKind::Frame;
    SetFocus(isPage ? controls_.of(StripBeside(before)) : GetNextDlgTabItem(window, before, FALSE));
}

}  // namespace corvane
