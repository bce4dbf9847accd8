#pragma once

#include <algorithm>
#include <cstddef>
#include <map>
#include <memory>
#include <string>

#include "check/calls/LogFiles.h"
#include "util/RuntimeError.h"

namespace corvane {

// A log in memory that is handed out in pieces, however large the buffer is.
class FakeLogSource final : public LogSource {
public:
    explicit FakeLogSource(std::string bytes, std::size_t pieceSize = 7)
        : bytes_(std::move(bytes)), pieceSize_(pieceSize) {}

    std::size_t Read(std::span<char> buffer) override {
        const std::size_t count = std::min({buffer.size(), pieceSize_, bytes_.size() - at_});
        std::copy_n(bytes_.begin() + static_cast<std::ptrdiff_t>(at_), count, buffer.begin());
        at_ += count;
        return count;
    }

private:
    std::string bytes_;
    std::size_t pieceSize_;
    std::size_t at_ = 0;
};

// Each byte of a log is a character of Latin-1.
class FakeLogFiles final : public LogFiles {
public:
    [[nodiscard]] std::unique_ptr<LogSource> Open(const std::wstring& path) const override {
        const auto found = files.find(path);
        if (found == files.end())
            throw MakeRuntimeError(ErrorNumber::InvalidProcedureCall);
        return std::make_unique<FakeLogSource>(found->second);
    }
    [[nodiscard]] LogEnd OpenEnd(const std::wstring& path, std::uint64_t most) const override {
        static_cast<void>(Open(path));  // raises
        const std::string& bytes = files.find(path)->second;
        const std::size_t begin =
            bytes.size() <= most ? 0 : bytes.size() - static_cast<std::size_t>(most);
        return {std::make_unique<FakeLogSource>(bytes.substr(begin)), begin == 0};
    }
    [[nodiscard]] std::wstring TextFromLog(std::string_view bytes) const override {
        std::wstring text;
        for (const char byte : bytes)
            text += static_cast<wchar_t>(static_cast<unsigned char>(byte));
        return text;
    }
    void Write(const std::wstring& path, std::string_view bytes) override { files[path] = bytes; }

    std::map<std::wstring, std::string> files;
};

}  // namespace corvane
