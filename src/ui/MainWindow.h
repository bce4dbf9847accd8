#pragma once

#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "ui/Form.h"
#include "util/Windows.h"

namespace corvane {

class FormActions;

// The form in a native window. It is created when the form is shown for the first time, so that a
// run for 3CX pays for no window.
class MainWindow final : public FormView {
public:
    MainWindow(Form& form, FormActions& actions, HINSTANCE instance);
    ~MainWindow() override;
    MainWindow(const MainWindow&) = delete;
    MainWindow& operator=(const MainWindow&) = delete;

    // Nothing until the window was shown.
    [[nodiscard]] HWND handle() const { return window_; }

    // Serves messages until the window has gone.
    void RunMessageLoop();

    // Asks to close, as the close box does.
    void Close();

    void OnControlChanged(const Control& control, ControlAspect aspect) override;
    void OnWindowChanged() override;
    void OnFocusRequested(const Control& control) override;

private:
    struct DeleteFont {
        void operator()(HFONT font) const { DeleteObject(font); }
    };
    using UniqueFont = std::unique_ptr<std::remove_pointer_t<HFONT>, DeleteFont>;

    static LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wParam,
                                            LPARAM lParam);
    static LRESULT CALLBACK PanelProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT OnCommand(int controlId, int notification);
    LRESULT OnNotify(const NMHDR& header);
    void OnLeave(TextBox& box);

    void Create();
    void CreateControl(Control& control);
    [[nodiscard]] HWND ParentOf(const Control& control) const;
    void AddTooltip(const Control& control);
    void ApplyDpi();
    void SizeWindow();
    void PlaceControl(const Control& control);
    void ShowState(const Control& control);
    void ShowText(const Control& control);

    [[nodiscard]] HWND windowOf(const Control& control) const { return windows_[control.row()]; }
    [[nodiscard]] Control* ControlOfId(int controlId) const;

    Form& form_;
    FormActions& actions_;
    HINSTANCE instance_;
    HWND window_ = nullptr;
    HWND tooltips_ = nullptr;
    UINT dpi_ = 96;
    UniqueFont font_;
    std::vector<HWND> windows_;
    std::unordered_map<std::size_t, std::wstring> textOnEntry_;
    const Control* typedInto_ = nullptr;
    bool showing_ = false;  // the form is being shown: its changes are no input
};

}  // namespace corvane
