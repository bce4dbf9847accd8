#pragma once

#include <string_view>

namespace corvane {

// Whether a status line reaches the log file only when the user has the log on, or in any case.
enum class LogMode { AsConfigured, Forced };

// The one way any part of the program reports progress and outcomes. A line that cannot be logged
// is lost and the run goes on.
class StatusWriter {
public:
    virtual ~StatusWriter() = default;
    virtual void WriteStatus(std::wstring_view message, LogMode mode) = 0;
    void WriteStatus(std::wstring_view message) { WriteStatus(message, LogMode::AsConfigured); }
};

}  // namespace corvane
