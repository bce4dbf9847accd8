#include "check/platform/WindowsLogFiles.h"

#include <algorithm>

#include "platform/kit/AnsiText.h"
#include "platform/kit/ComError.h"
#include "platform/kit/Handles.h"
#include "util/Text.h"

namespace corvane {

namespace {

// How much Windows reads or writes at once at the most.
constexpr std::size_t mostBytes = std::size_t{1} << 24;

// The system's words for what went wrong with the file.
[[noreturn]] void ThrowLastError(std::wstring_view what, const std::wstring& path) {
    RuntimeError error = ErrorFromHResult(HRESULT_FROM_WIN32(GetLastError()));
    error.description = Join(what, L" ", path, L": ", error.description);
    throw error;
}

class LogFile final : public LogSource {
public:
    explicit LogFile(const std::wstring& path)
        : path_(path),
          file_(CreateFileW(path.c_str(), GENERIC_READ,
                            // Runs go on writing it, and who wants it gone may delete it.
                            FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                            OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr)) {
        if (!file_)
            ThrowLastError(L"Could not open", path);
    }

    std::size_t Read(std::span<char> buffer) override {
        DWORD count = 0;
        if (!ReadFile(file_.get(), buffer.data(),
                      static_cast<DWORD>(std::min(buffer.size(), mostBytes)), &count, nullptr)) {
            ThrowLastError(L"Could not read", path_);
        }
        return count;
    }

private:
    std::wstring path_;
    UniqueHandle file_;
};

}  // namespace

std::unique_ptr<LogSource> WindowsLogFiles::Open(const std::wstring& path) const {
    return std::make_unique<LogFile>(path);
}

std::wstring WindowsLogFiles::TextFromLog(std::string_view bytes) const {
    return bytes.empty() ? std::wstring() : TextFromAnsi(bytes);
}

void WindowsLogFiles::Write(const std::wstring& path, std::string_view bytes) {
    const UniqueHandle file(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                        FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file)
        ThrowLastError(L"Could not write", path);
    while (!bytes.empty()) {
        DWORD count = 0;
        if (!WriteFile(file.get(), bytes.data(),
                       static_cast<DWORD>(std::min(bytes.size(), mostBytes)), &count, nullptr)) {
            ThrowLastError(L"Could not write", path);
        }
        bytes.remove_prefix(count);
    }
}

}  // namespace corvane
