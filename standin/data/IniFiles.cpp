#include "data/IniFiles.h"

#include <windows.h>

#include "shared/Files.h"

namespace practice {

void WriteMissingIniFiles(const Options& options) {
    const std::wstring common = options.dataFolder + L"GM.INI";
    if (!FileExists(common))
        WriteWholeFile(common, "[GoldMine]\r\nHTML_Cal_Notes=0\r\n");
    // No dialing instruction: proposing one is the business of whoever wants to be dialled through.
    const std::wstring personal = PersonalIniFile(options);
    if (!FileExists(personal)) {
        WriteWholeFile(personal,
                       "[GoldMine]\r\n\r\n[Modem]\r\nDeviceID=0\r\nTAPITranslation=0\r\n");
    }
}

std::wstring PersonalIniFile(const Options& options) {
    return options.dataFolder + options.user + L".INI";
}

std::wstring ReadIniValue(const std::wstring& file, const std::wstring& section,
                          const std::wstring& key) {
    std::wstring value(4096, L'\0');
    value.resize(GetPrivateProfileStringW(section.c_str(), key.c_str(), L"", value.data(),
                                          static_cast<DWORD>(value.size()), file.c_str()));
    return value;
}

}  // namespace practice
