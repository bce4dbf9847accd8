#pragma once

#include <utility>

#include "util/RuntimeError.h"

namespace corvane {

class MessageBoxes;
class StatusWriter;

// Shows an error that reached an entry point (start-up, a button, GoldMine's event) once, and
// writes it as one forced status line.
class ErrorReport {
public:
    ErrorReport(StatusWriter& status, MessageBoxes& boxes) : status_(status), boxes_(boxes) {}

    // The status line alone, for an error that its procedure tells the user about in other words.
    void WriteLine(const RuntimeError& error);

    // The exception that is being handled, as a run-time error.
    [[nodiscard]] static RuntimeError CurrentError();

    // Its box alone, where there is no status writer yet.
    static void ShowCurrentError(MessageBoxes& boxes) noexcept;

    // Runs an entry point; no exception leaves it. False when one would have.
    template <class Body>
    bool Guard(Body&& body) noexcept {
        try {
            std::forward<Body>(body)();
            return true;
        } catch (...) {
            ReportCurrentException();
            return false;
        }
    }

private:
    // An error that the user was told of gets its line and no second box.
    void Report(const RuntimeError& error);
    void ReportCurrentException() noexcept;

    StatusWriter& status_;
    MessageBoxes& boxes_;
};

}  // namespace corvane
