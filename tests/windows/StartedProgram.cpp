// Writes how it was started (show command, then its command line) into the file that it is told,
// then waits to be let go: StartedProgram <file> <name of an event> [anything]

#include <windows.h>

#include <string>

int wmain(int count, wchar_t** arguments) {
    if (count < 3)
        return 1;
    const HANDLE letGo = OpenEventW(SYNCHRONIZE, FALSE, arguments[2]);
    if (!letGo)
        return 2;
    STARTUPINFOW startup{};
    GetStartupInfoW(&startup);
    const bool told = (startup.dwFlags & STARTF_USESHOWWINDOW) != 0;
    std::wstring text = told ? std::to_wstring(startup.wShowWindow) : L"default";
    text += L'|';
    text += GetConsoleWindow() ? L"console" : L"no console";
    text += L'|';
    text += count > 3 ? arguments[3] : L"";

    // Nobody sees a file that is only half written.
    const std::wstring unfinished = std::wstring(arguments[1]) + L".part";
    const HANDLE file = CreateFileW(unfinished.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return 3;
    DWORD written = 0;
    const auto bytes = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    const BOOL complete = WriteFile(file, text.data(), bytes, &written, nullptr);
    CloseHandle(file);
    if (!complete || !MoveFileW(unfinished.c_str(), arguments[1]))
        return 4;
    constexpr DWORD longestWait = 60'000;
    return WaitForSingleObject(letGo, longestWait) == WAIT_OBJECT_0 ? 0 : 5;
}
