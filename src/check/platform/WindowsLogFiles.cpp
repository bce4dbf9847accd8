#include "check/platform/WindowsLogFiles.h"

#include <algorithm>
#include <utility>

#include "check/platform/FileBytes.h"
#include "platform/kit/AnsiText.h"
#include "platform/kit/Handles.h"

namespace corvane {

namespace {

// How much Windows reads at once at the most.
constexpr std::size_t mostBytes = std::size_t{1} << 24;

class LogFile final : public LogSource {
public:
    explicit LogFile(const std::wstring& path)
        : path_(path),
          file_(CreateFileW(path.c_str(), GENERIC_READ,
                            // Runs go on writing it, and who wants it gone may delete it.
                            FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                            OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr)) {
        if (!file_)
            ThrowFileError(L"Could not open", path);
    }

    std::size_t Read(std::span<char> buffer) override {
        DWORD count = 0;
        if (!ReadFile(file_.get(), buffer.data(),
                      static_cast<DWORD>(std::min(buffer.size(), mostBytes)), &count, nullptr)) {
            ThrowFileError(L"Could not read", path_);
        }
        return count;
    }

    // False when all of it is left to be read, because it is no longer than that.
    bool GoToLast(std::uint64_t bytes) {
        LARGE_INTEGER size{};
        if (!GetFileSizeEx(file_.get(), &size))
            ThrowFileError(L"Could not read", path_);
        if (static_cast<std::uint64_t>(size.QuadPart) <= bytes)
            return false;
        size.QuadPart -= static_cast<LONGLONG>(bytes);
        if (!SetFilePointerEx(file_.get(), size, nullptr, FILE_BEGIN))
            ThrowFileError(L"Could not read", path_);
        return true;
    }

private:
    std::wstring path_;
    UniqueHandle file_;
};

}  // namespace

std::unique_ptr<LogSource> WindowsLogFiles::Open(const std::wstring& path) const {
    return std::make_unique<LogFile>(path);
}

LogEnd WindowsLogFiles::OpenEnd(const std::wstring& path, std::uint64_t most) const {
    auto file = std::make_unique<LogFile>(path);
    const bool whole = !file->GoToLast(most);
    return {std::move(file), whole};
}

std::wstring WindowsLogFiles::TextFromLog(std::string_view bytes) const {
    return bytes.empty() ? std::wstring() : TextFromAnsi(bytes);
}

void WindowsLogFiles::Write(const std::wstring& path, std::string_view bytes) {
    const UniqueHandle file(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                        FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file)
        ThrowFileError(L"Could not write", path);
    WriteBytes(file.get(), bytes, path);
}

}  // namespace corvane
