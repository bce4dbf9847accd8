#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace corvane {

class LogSource;

// The lines of a log of any size, in the memory of one buffer.
class LogReader {
public:
    // Of a line that is longer than the buffer, its beginning is read.
    static constexpr std::size_t usualBuffer = std::size_t{1} << 20;
    explicit LogReader(LogSource& source, std::size_t bufferSize = usualBuffer)
        : source_(source), buffer_(bufferSize) {}

    // The next line without its end, be that CR LF, LF or the end of the file; it stands until the
    // next call.
    [[nodiscard]] std::optional<std::string_view> Next();

private:
    [[nodiscard]] std::string_view Rest() const { return {buffer_.data() + begin_, end_ - begin_}; }
    // False when nothing more comes, or no room is left for it.
    bool Fill();

    LogSource& source_;
    std::vector<char> buffer_;
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
    bool inLongLine_ = false;  // whose beginning was handed out
};

}  // namespace corvane
