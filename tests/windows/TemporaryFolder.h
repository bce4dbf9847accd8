#pragma once

#include <atomic>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "platform/kit/Windows.h"

namespace corvane::test {

// An empty folder of its own, deleted with what is in it.
class TemporaryFolder {
public:
    TemporaryFolder() {
        static std::atomic<int> count = 0;
        folder_ = std::filesystem::temp_directory_path() /
                  (L"corvane-" + std::to_wstring(GetCurrentProcessId()) + L"-" +
                   std::to_wstring(++count));
        std::filesystem::create_directories(folder_);
    }
    ~TemporaryFolder() {
        std::error_code ignored;  // a virus scanner may hold a file: the rest is no test's matter
        std::filesystem::remove_all(folder_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    // Without a trailing backslash.
    [[nodiscard]] std::wstring path() const { return folder_.wstring(); }
    [[nodiscard]] std::wstring file(std::wstring_view name) const {
        return (folder_ / name).wstring();
    }

    std::wstring Write(std::wstring_view name, std::string_view content) const {
        std::ofstream(folder_ / name, std::ios::binary) << content;
        return file(name);
    }
    [[nodiscard]] static std::string Read(const std::wstring& path) {
        std::ifstream stream(std::filesystem::path(path), std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

private:
    std::filesystem::path folder_;
};

}  // namespace corvane::test
