#pragma once

#include "ui/Form.h"
#include "util/Windows.h"

namespace corvane {

// Shows a text box that only ever grows at its end. A few lines are shown as they come, so that a
// call can be watched; a flood of them is shown many at once, because each showing costs more than
// the line itself. Whoever reads the native box gets all of it.
class LogBox {
public:
    explicit LogBox(const TextBox& model) : model_(model) {}
    LogBox(const LogBox&) = delete;
    LogBox& operator=(const LogBox&) = delete;

    // The native box must not outlive this.
    void Attach(HWND native);

    // The model's text anew.
    void ShowText();
    // What was appended to the model's text.
    void ShowAppended();

private:
    static LRESULT CALLBACK Procedure(HWND native, UINT message, WPARAM wParam, LPARAM lParam,
                                      UINT_PTR id, DWORD_PTR self);
    void Flush();

    const TextBox& model_;
    HWND native_ = nullptr;
    std::size_t shown_ = 0;    // characters of the model's text that the native box holds
    int shownAtOnce_ = 0;      // lines since the program last served its messages
    ULONGLONG lastFlush_ = 0;  // milliseconds, of GetTickCount64
    bool busy_ = false;        // the messages come from here
};

}  // namespace corvane
