#pragma once

#include <string>
#include <string_view>

namespace test_support {

// An empty folder of its own, deleted with what is in it.
class TemporaryFolder {
public:
    // The name may hold blanks, as folders do; it has none for what cannot deal with them.
    explicit TemporaryFolder(std::wstring_view name = L"corvane");
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    // Without a trailing backslash.
    [[nodiscard]] const std::wstring& path() const { return path_; }
    [[nodiscard]] std::wstring pathWithBackslash() const { return path_ + L"\\"; }
    [[nodiscard]] std::wstring file(std::wstring_view name) const;

    // Answers the path of the file.
    std::wstring Write(std::wstring_view name, std::string_view content) const;

private:
    std::wstring path_;
};

}  // namespace test_support
