// Stands for 3CX's call trigger: writes down what it was asked to dial.
#include <windows.h>

#include <string>

#include "shared/Files.h"
#include "shared/Handles.h"
#include "shared/Text.h"

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR, int) {
    using namespace practice;
    std::wstring path(32'768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    const std::wstring stem = path.substr(0, path.rfind(L'\\') + 1) + L"CallTriggerCmd";

    const std::string line = ToUtf8(EscapeLine(GetCommandLineW())) + '\n';
    const KernelHandle log(CreateFileW((stem + L".log").c_str(), FILE_APPEND_DATA,
                                       FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS,
                                       FILE_ATTRIBUTE_NORMAL, nullptr));
    DWORD written = 0;
    if (!log ||
        !WriteFile(log.get(), line.data(), static_cast<DWORD>(line.size()), &written, nullptr)) {
        return 1;
    }
    if (const auto delay = ReadWholeFile(stem + L".delay"))
        Sleep(static_cast<DWORD>(ToNumber(FromUtf8(*delay), 0)));
    return 0;
}
