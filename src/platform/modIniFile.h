#pragma once

#include <string>

#include "seams/IniFiles.h"

namespace corvane {

// INI files through the Windows private-profile functions.
class modIniFile final : public IniFiles {
public:
    bool WriteIniValue(const std::wstring& section, const std::wstring& key,
                       const std::wstring& value, const std::wstring& path) override;
    [[nodiscard]] std::wstring ReadIniValue(const std::wstring& section, const std::wstring& key,
                                            const std::wstring& path) const override;
};

}  // namespace corvane
