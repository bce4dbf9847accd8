#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/kit/Handles.h"
#include "ui/form/Form.h"
#include "ui/window/StatusBox.h"
#include "ui/window/ToolTips.h"

namespace corvane {

// The native control of each control of the form: created from the control catalogue, placed for a
// resolution, and shown in the state that the form has.
class ControlWindows {
public:
    ControlWindows(const Form& form, HINSTANCE instance);

    // Registers the class of frames; what their controls tell goes to the window's root. The
    // resolution is in dots per inch. The controls come up in the state that the form has.
    void Create(HWND window, UINT dpi);
    [[nodiscard]] HWND window() const { return window_; }

    // Places and fonts for another resolution, in dots per inch.
    void Layout(UINT dpi);

    void Show(const Control& control, ControlAspect aspect);
    // Meanwhile: what the native controls tell is no input.
    [[nodiscard]] bool showing() const { return showing_; }

    // The parameters area is there only while the window is wide.
    void ShowParams(bool shown);

    [[nodiscard]] HWND of(const Control& control) const { return windows_[control.row()]; }
    // Nothing for what is no control, or none of that kind.
    [[nodiscard]] Control* FindById(int controlId) const;
    [[nodiscard]] Control* ControlOf(HWND native) const { return FindById(GetDlgCtrlID(native)); }
    [[nodiscard]] TextBox* TextBoxOf(HWND native) const;
    [[nodiscard]] static std::wstring TextOf(HWND window);

    // Sent to the window with the address of a mouse message that a frame received; ShowTipFor is
    // for it, and for the window's own.
    static constexpr UINT mouseOverFrame = WM_APP + 2;
    // The tip of the disabled control that is seen where the mouse is: the window beneath received
    // the message.
    void ShowTipFor(const MSG& received);

    // An option button is just getting the focus; Windows tells that as a click.
    [[nodiscard]] bool focusArrives() const { return focusArrives_; }

private:
    static LRESULT CALLBACK FrameProcedure(HWND frame, UINT message, WPARAM wParam, LPARAM lParam);
    void CreateControl(const Control& control);
    void AddTabs(const TabStrip& strip);
    void NameForScreenReaders() const;
    void TakeFont();
    void PlaceControl(const Control& control);
    void CutOutPages();
    void CutOutPage(const Control& strip, const Control& page);
    void ShowAspect(const Control& control, ControlAspect aspect);
    void ShowText(const Control& control);
    void ShowValue(const Control& control) const;
    void MarkTabStop(const OptionButton& option) const;
    void MarkTabStops(const Control& changed) const;
    [[nodiscard]] int Pixels(int twips) const;
    [[nodiscard]] RECT Pixels(const Place& place) const;
    [[nodiscard]] RECT PlaceOf(const Control& control) const;
    [[nodiscard]] int HeightOf(const std::wstring& text, int width) const;
    [[nodiscard]] bool IsShown(const Control& control) const;
    [[nodiscard]] bool IsInParamsArea(const Control& control) const;

    const Form& form_;
    HINSTANCE instance_;
    HWND window_ = nullptr;
    ToolTips tips_;
    UINT dpi_ = 96;
    UniqueFont font_;
    bool paramsShown_ = false;
    bool showing_ = false;
    bool focusArrives_ = false;
    std::optional<StatusBox> status_;  // made with its native box
    std::vector<std::unique_ptr<WindowSubclass>> subclasses_;
    std::vector<HWND> windows_;  // in the order of the catalogue
    std::vector<HWND> borders_;  // the group box of a frame with a border
};

}  // namespace corvane
