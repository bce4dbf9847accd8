#include "app/AboutText.h"

#include "util/ProgramInfo.h"
#include "util/Text.h"

namespace corvane {

std::wstring AboutText(const ProgramInfo& program, std::wstring_view logPath) {
    return Join(productName, L"\r\nVersion ", program.VersionText(),
                L"\r\n\r\nLinks the GoldMine contact manager with the 3CX telephone system: shows "
                L"the GoldMine record of a caller, writes the call history, links the call "
                L"recording, and dials the numbers that you dial in GoldMine.\r\n\r\n"
                L"Program:\r\n",
                program.ExecutablePath(), L"\r\n\r\nLog file:\r\n", logPath,
                L"\r\n\r\nSettings:\r\n"
                L"HKEY_CURRENT_USER\\SOFTWARE\\Halvorn Systems\\CorvaneTo3CX");
}

}  // namespace corvane
