#pragma once

#include <map>
#include <optional>
#include <string>

#include "check/report/ReportFiles.h"
#include "util/RuntimeError.h"

namespace corvane::test {

// Files in memory; a path without a drive is one of "C:\here".
class FakeReportFiles final : public ReportFiles {
public:
    [[nodiscard]] std::wstring FullPath(const std::wstring& path) const override {
        return path.find(L':') == std::wstring::npos ? L"C:\\here\\" + path : path;
    }
    [[nodiscard]] bool Exists(const std::wstring& path) const override {
        return files.contains(path);
    }
    // The tests' texts need no more.
    [[nodiscard]] std::string Utf8(std::wstring_view text) const override {
        std::string bytes;
        for (const wchar_t each : text)
            bytes += each < 0x80 ? static_cast<char>(each) : '?';
        return bytes;
    }
    void WriteNew(const std::wstring& path, std::string_view bytes) override {
        if (writeError)
            throw *writeError;
        files[path] = bytes;
    }

    std::map<std::wstring, std::string> files;
    std::optional<RuntimeError> writeError;
};

}  // namespace corvane::test
