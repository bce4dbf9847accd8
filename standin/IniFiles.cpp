#include "IniFiles.h"

#include "Files.h"

namespace practice {

void WriteMissingIniFiles(const Options& options) {
    const std::wstring common = options.dataFolder + L"GM.INI";
    if (!FileExists(common)) {
        WriteWholeFile(common, "[GoldMine]\r\nHTML_Cal_Notes=0\r\n");
    }
    // No dialing instruction: proposing one is the business of whoever wants to be dialled through.
    const std::wstring personal = options.dataFolder + options.user + L".INI";
    if (!FileExists(personal)) {
        WriteWholeFile(personal,
                       "[GoldMine]\r\n\r\n[Modem]\r\nDeviceID=0\r\nTAPITranslation=0\r\n");
    }
}

}  // namespace practice
