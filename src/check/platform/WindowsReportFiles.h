#pragma once

#include <string>

#include "check/report/ReportFiles.h"

namespace corvane {

class WindowsReportFiles final : public ReportFiles {
public:
    [[nodiscard]] std::wstring FullPath(const std::wstring& path) const override;
    [[nodiscard]] bool Exists(const std::wstring& path) const override;
    [[nodiscard]] std::string Utf8(std::wstring_view text) const override;
    void WriteNew(const std::wstring& path, std::string_view bytes) override;
};

}  // namespace corvane
