#include "check/platform/ConsoleOutput.h"

#include <string>

#include "platform/kit/AnsiText.h"
#include "platform/kit/Windows.h"
#include "util/Text.h"

namespace corvane {

namespace {

// One that is closed, or whose reader went away, takes no more: nobody is left to be told.
void WriteTo(HANDLE output, std::wstring_view text) {
    std::wstring whole = WithLineBreaks(text);
    DWORD mode = 0;
    DWORD written = 0;
    if (!GetConsoleMode(output, &mode)) {
        const std::string bytes = AnsiFromText(whole, CP_UTF8);
        WriteFile(output, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
        return;
    }
    // Older consoles take some thousand characters at once.
    constexpr std::size_t most = 8000;
    for (std::wstring_view rest = whole; !rest.empty(); rest.remove_prefix(written)) {
        if (!WriteConsoleW(output, rest.data(), static_cast<DWORD>(rest.substr(0, most).size()),
                           &written, nullptr) ||
            written == 0) {
            return;
        }
    }
}

}  // namespace

void ConsoleOutput::Write(std::wstring_view text) {
    WriteTo(GetStdHandle(STD_OUTPUT_HANDLE), text);
}

void ConsoleOutput::WriteError(std::wstring_view text) {
    WriteTo(GetStdHandle(STD_ERROR_HANDLE), text);
}

}  // namespace corvane
