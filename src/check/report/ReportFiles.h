#pragma once

#include <string>
#include <string_view>

namespace corvane {

// Where a report is written to.
class ReportFiles {
public:
    virtual ~ReportFiles() = default;
    // The path with all that it lacks of a whole one.
    [[nodiscard]] virtual std::wstring FullPath(const std::wstring& path) const = 0;
    [[nodiscard]] virtual bool Exists(const std::wstring& path) const = 0;
    [[nodiscard]] virtual std::string Utf8(std::wstring_view text) const = 0;
    // The file comes whole or not at all, and replaces none. Raises run-time errors.
    virtual void WriteNew(const std::wstring& path, std::string_view bytes) = 0;
};

}  // namespace corvane
