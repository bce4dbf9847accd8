#include "ui/window/BoxVisit.h"

#include "ui/form/FormActions.h"

namespace corvane {

void BoxVisit::OnNotification(TextBox& box, int notification) {
    if (box.spec().has(ControlTrait::readOnly))
        return;
    switch (notification) {
        case EN_SETFOCUS:
            if (!entered_)
                Enter(box);
            else if (&box != entered_ && !leaving_)
                PostMessageW(controls_.window(), focusSettled, 0, 0);
            break;
        case EN_CHANGE:
            if (controls_.showing())
                return;
            typedInto_ = &box;
            box.setText(ControlWindows::TextOf(controls_.of(box)));
            typedInto_ = nullptr;
            break;
        case EN_KILLFOCUS:
            // Decided when the focus has settled, and not for the focus moves of a check.
            if (&box == entered_ && !leaving_)
                PostMessageW(controls_.window(), focusSettled, 0, 0);
            break;
        default:
            break;
    }
}

void BoxVisit::Enter(TextBox& box) {
    entered_ = &box;
    textOnEntry_ = box.text();
}

void BoxVisit::EnterFocused() {
    TextBox* box = controls_.TextBoxOf(GetFocus());
    if (box && !box->spec().has(ControlTrait::readOnly))
        Enter(*box);
}

// The user went on to another control. Another program's window is no leaving: the check would
// pull the user back with a message box.
void BoxVisit::OnFocusSettled() {
    const HWND focus = GetFocus();
    if (entered_ && focus != controls_.of(*entered_) && IsChild(controls_.window(), focus))
        static_cast<void>(Leave());
}

// A box that is still to be left keeps the visit until its check is done.
bool BoxVisit::Leave() {
    if (!entered_)
        return true;
    if (leaving_)
        return false;
    leaving_ = true;
    TextBox& box = *entered_;
    const bool left = actions_.MayLeave(box, textOnEntry_ != box.text());
    entered_ = left ? nullptr : &box;
    if (left)
        EnterFocused();  // the same box, where Enter pressed the default button
    else
        form_.SetFocus(box);
    leaving_ = false;
    return left;
}

}  // namespace corvane
