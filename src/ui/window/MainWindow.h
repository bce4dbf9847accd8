#pragma once

#include <memory>
#include <string>

#include "platform/kit/ProgramWindow.h"
#include "ui/form/Form.h"
#include "ui/window/ControlWindows.h"

namespace corvane {

class FormActions;

// The form in a native window. It is created when the form is shown for the first time, so that a
// run for 3CX pays for no window.
class MainWindow final : public FormView, public ProgramWindow {
public:
    explicit MainWindow(HINSTANCE instance) : instance_(instance) {}
    ~MainWindow() override;
    MainWindow(const MainWindow&) = delete;
    MainWindow& operator=(const MainWindow&) = delete;

    [[nodiscard]] HWND handle() const override { return window_; }

    // Serves messages until the window has gone.
    void RunMessageLoop();

    bool TranslateKey(MSG& message) override;

    void Attach(Form& form, FormActions& actions) override;
    void Detach() override;
    void OnControlChanged(const Control& control, ControlAspect aspect) override;
    void OnWindowChanged() override;
    void OnFocusRequested(const Control& control) override;
    [[nodiscard]] bool FinishEntry() override { return LeaveBox(); }
    void Close() override;

private:
    static LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wParam,
                                            LPARAM lParam);
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void OnCommand(int controlId, int notification);
    void OnClick(Control& control);
    void OnTextBox(TextBox& box, int notification);
    void Enter(TextBox& box);
    void EnterFocused();
    void OnFocusSettled();
    [[nodiscard]] bool LeaveBox();
    void OnTabSelected(HWND strip);
    // Keys that belong to the window as a whole; false leaves the message to the dialog keyboard.
    bool OnKey(const MSG& message);
    bool OnControlKey(const MSG& message);
    bool OnArrow(const MSG& message);
    bool OnKeyInManyLines(const MSG& message);
    void StepThroughTabs(HWND focused, int step);
    void KeepFocusUsable(const Control& changed, HWND before);
    [[nodiscard]] TabStrip& StripBeside(HWND native) const;
    bool CloseIfAllowed();
    void OnActivate(bool active);
    [[nodiscard]] LRESULT DefaultButton() const;
    void OnDpiChanged(UINT dpi, const RECT& suggested);

    void Create();
    void Size();
    void CentreOnMonitor();

    HINSTANCE instance_;
    Form* form_ = nullptr;
    FormActions* actions_ = nullptr;
    HWND window_ = nullptr;
    UINT dpi_ = 96;
    std::unique_ptr<ControlWindows> controls_;  // made with the window
    HWND lastFocus_ = nullptr;                  // comes back when the window becomes active again
    TextBox* entered_ = nullptr;  // the box the user is in, or whose check is still to be done
    std::wstring textOnEntry_;    // what it held then
    bool leaving_ = false;        // its check runs: the focus moves of its boxes are no leaving
    const Control* typedInto_ = nullptr;
    bool askedToClose_ = false;  // the actions are being asked
    bool closeWaits_ = false;    // for the user's answer to a message box
    bool showing_ = false;       // the form is being shown: what the controls tell is no input
};

}  // namespace corvane
