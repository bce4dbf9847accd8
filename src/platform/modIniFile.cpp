#include "platform/modIniFile.h"

#include <array>
#include <new>

#include "platform/kit/AnsiText.h"
#include "platform/kit/Windows.h"

namespace corvane {

bool modIniFile::WriteIniValue(const std::wstring& section, const std::wstring& key,
                               const std::wstring& value, const std::wstring& path) {
    try {
        WritePrivateProfileStringA(AnsiFromText(section).c_str(), AnsiFromText(key).c_str(),
                                   AnsiFromText(value).c_str(), AnsiFromText(path).c_str());
        return true;
    } catch (const std::bad_alloc&) {
        return false;  // the one error that can be raised here
    }
}

std::wstring modIniFile::ReadIniValue(const std::wstring& section, const std::wstring& key,
                                      const std::wstring& path) const {
    std::array<char, 255> buffer{};
    const DWORD length = GetPrivateProfileStringA(
        AnsiFromText(section).c_str(), AnsiFromText(key).c_str(), "", buffer.data(),
        static_cast<DWORD>(buffer.size()), AnsiFromText(path).c_str());
    return TextFromAnsi({buffer.data(), length});
}

}  // namespace corvane
