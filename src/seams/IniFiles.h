#pragma once

#include <string>

namespace corvane {

// Real INI files, GoldMine's among them. modIniFile is the real thing.
class IniFiles {
public:
    virtual ~IniFiles() = default;
    // False only when an error was raised during the call: a write that the system refuses still
    // reports success.
    virtual bool WriteIniValue(const std::wstring& section, const std::wstring& key,
                               const std::wstring& value, const std::wstring& path) = 0;
    // The value as it stands, cut at 254 characters; empty when the key or the file is missing.
    [[nodiscard]] virtual std::wstring ReadIniValue(const std::wstring& section,
                                                    const std::wstring& key,
                                                    const std::wstring& path) const = 0;
};

}  // namespace corvane
