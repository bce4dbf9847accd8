#pragma once

#include <string_view>

namespace corvane {

enum class BoxButtons { Ok, YesNo, YesNoCancel };
enum class BoxIcon { None, Critical, Exclamation };
enum class BoxAnswer { Ok, Cancel, Yes, No };

// Modal boxes titled with the product name, in the foreground even when the window is not shown.
class MessageBoxes {
public:
    virtual ~MessageBoxes() = default;
    virtual BoxAnswer Show(std::wstring_view text, BoxButtons buttons, BoxIcon icon) = 0;

    void Notify(std::wstring_view text, BoxIcon icon = BoxIcon::None) {
        Show(text, BoxButtons::Ok, icon);
    }
    // True only for Yes.
    [[nodiscard]] bool Confirm(std::wstring_view text) {
        return Show(text, BoxButtons::YesNo, BoxIcon::None) == BoxAnswer::Yes;
    }
};

}  // namespace corvane
