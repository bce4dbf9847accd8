#pragma once

#include "ui/form/Form.h"
#include "ui/window/WindowSubclass.h"

namespace corvane {

// Shows a text box that only ever grows at its end. Lines are shown and painted as they come, so
// that a call can be watched. Showing costs more the longer the text is; so that a flood of lines
// costs no more per line at its end than at its beginning, showing takes a small share of the time
// at most, and the lines between two showings are shown together. Whoever reads the native box gets
// all of it.
class StatusBox final : public WindowSubclass {
public:
    StatusBox(const TextBox& model, HWND native) : WindowSubclass(native), model_(model) {}

    // The model's text anew.
    void ShowText();
    // What was appended to the model's text.
    void ShowAppended();

private:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void Flush();

    const TextBox& model_;
    std::size_t shown_ = 0;   // characters of the model's text that the native box holds
    LONGLONG nextFlush_ = 0;  // not before; of QueryPerformanceCounter
    bool timerRuns_ = false;
    bool busy_ = false;  // the messages come from here
};

}  // namespace corvane
