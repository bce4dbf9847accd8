#pragma once

#include <optional>

#include "platform/kit/ProgramWindow.h"
#include "ui/form/Form.h"
#include "ui/window/BoxVisit.h"
#include "ui/window/ControlWindows.h"
#include "ui/window/Keyboard.h"

namespace corvane {

class ComWhenNeeded;
class FormActions;

// The form in a native window. It is created when the form is shown for the first time, so that a
// run for 3CX pays for no window.
class MainWindow final : public FormView, public ProgramWindow {
public:
    MainWindow(HINSTANCE instance, ComWhenNeeded& com) : instance_(instance), com_(com) {}
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
    [[nodiscard]] bool FinishEntry() override { return !visit_ || visit_->Leave(); }
    void Close() override;

private:
    static LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wParam,
                                            LPARAM lParam);
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void OnCommand(int controlId, int notification);
    void OnClick(Control& control);
    void OnTabSelected(HWND strip);
    bool CloseIfAllowed();
    void OnActivate(bool active);
    void OnDpiChanged(UINT dpi, const RECT& suggested);

    void Create();
    void Size();
    void CentreOnMonitor();

    HINSTANCE instance_;
    ComWhenNeeded& com_;  // is entered for names that screen readers read, and for the shell
    Form* form_ = nullptr;
    FormActions* actions_ = nullptr;
    HWND window_ = nullptr;
    UINT dpi_ = 96;
    // Made with the window.
    std::optional<ControlWindows> controls_;
    std::optional<BoxVisit> visit_;
    std::optional<Keyboard> keyboard_;
    HWND lastFocus_ = nullptr;        // comes back when the window becomes active again
    bool fromAnotherProgram_ = true;  // comes the user who activates the window next
    bool askedToClose_ = false;       // the actions are being asked
    bool closeWaits_ = false;         // for the user's answer to a message box
};

}  // namespace corvane
