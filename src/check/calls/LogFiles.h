#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace corvane {

// An open log, from its beginning to its end.
class LogSource {
public:
    virtual ~LogSource() = default;
    // Fills the buffer as far as it can; 0 at the end. Raises run-time errors.
    virtual std::size_t Read(std::span<char> buffer) = 0;
};

// A log that is read from somewhere in its middle on, but for a short one.
struct LogEnd {
    std::unique_ptr<LogSource> source;
    bool whole;
};

// What the telling of calls asks of files.
class LogFiles {
public:
    virtual ~LogFiles() = default;
    // While runs of the program write it. Raises run-time errors.
    [[nodiscard]] virtual std::unique_ptr<LogSource> Open(const std::wstring& path) const = 0;
    // From so many bytes before its end on. Raises run-time errors.
    [[nodiscard]] virtual LogEnd OpenEnd(const std::wstring& path, std::uint64_t most) const = 0;
    // The log's bytes are those of the system's code page.
    [[nodiscard]] virtual std::wstring TextFromLog(std::string_view bytes) const = 0;
    // Makes the file or replaces it. Raises run-time errors.
    virtual void Write(const std::wstring& path, std::string_view bytes) = 0;
};

}  // namespace corvane
