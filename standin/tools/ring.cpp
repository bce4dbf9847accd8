// Starts a program as the 3CX client does when a call starts, is connected and ends.
#include <windows.h>

#include <cstdio>
#include <cwchar>
#include <string>
#include <string_view>

#include "shared/Handles.h"

namespace {

using practice::KernelHandle;

constexpr DWORD longestWaitSeconds = 24 * 60 * 60;
constexpr const wchar_t* usage =
    L"ring <program.exe> <S|C|E|call> <caller id> [/T:I|O] [/I:<call id>] [/CallerIdOnSOnly]\n"
    L"     [/Wait:<seconds>]\n"
    L"\n"
    L"  S, C, E  sends the event that the call started, was connected, or ended\n"
    L"  call     sends the three in turn, each after the one before was handled\n"
    L"  /T       I inbound (the default), O outbound\n"
    L"  /I       the call's identifier, the same in all of its events (default 1001)\n"
    L"  /CallerIdOnSOnly  leaves the caller id out of C and E\n"
    L"  /Wait    how long the program may take for one event (default 120)\n";

struct Call {
    std::wstring program;
    std::wstring callerId;
    std::wstring type = L"I";
    std::wstring identifier = L"1001";
    bool callerIdOnStartOnly = false;
    DWORD waitSeconds = 120;
};

std::wstring CommandLine(const Call& call, wchar_t event) {
    std::wstring line = L"\"" + call.program + L"\" /N:" + event;
    if (event == L'S' || !call.callerIdOnStartOnly)
        line += L" /C:" + call.callerId;
    return line + L" /T:" + call.type + L" /I:" + call.identifier;
}

bool Send(const Call& call, wchar_t event) {
    std::wstring line = CommandLine(call, event);
    std::wprintf(L"%ls\n", line.c_str());
    STARTUPINFOW startUp{};
    startUp.cb = sizeof startUp;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(call.program.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr,
                        nullptr, &startUp, &process)) {
        std::fwprintf(stderr, L"ring: %ls cannot be started, error %lu.\n", call.program.c_str(),
                      GetLastError());
        return false;
    }
    const KernelHandle thread(process.hThread);
    const KernelHandle handle(process.hProcess);
    if (WaitForSingleObject(handle.get(), call.waitSeconds * 1000) != WAIT_OBJECT_0) {
        std::fwprintf(stderr, L"ring: the program is still busy with %lc after %lu seconds.\n",
                      event, call.waitSeconds);
        return false;
    }
    return true;
}

bool ReadSeconds(const std::wstring& text, DWORD& seconds) {
    wchar_t* end = nullptr;
    const unsigned long number = std::wcstoul(text.c_str(), &end, 10);
    if (*end != L'\0' || number < 1 || number > longestWaitSeconds)
        return false;
    seconds = number;
    return true;
}

bool ReadOption(Call& call, const std::wstring& option) {
    const std::wstring_view start = std::wstring_view(option).substr(0, 3);
    if (start == L"/T:")
        call.type = option.substr(3);
    else if (start == L"/I:")
        call.identifier = option.substr(3);
    else if (option == L"/CallerIdOnSOnly")
        call.callerIdOnStartOnly = true;
    else if (option.starts_with(L"/Wait:"))
        return ReadSeconds(option.substr(6), call.waitSeconds);
    else
        return false;
    return true;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    if (count < 4) {
        std::fputws(usage, stderr);
        return 2;
    }
    Call call;
    call.program = arguments[1];
    const std::wstring what = arguments[2];
    call.callerId = arguments[3];
    for (int i = 4; i < count; ++i) {
        if (!ReadOption(call, arguments[i])) {
            std::fwprintf(stderr, L"ring: option not understood: %ls\n%ls", arguments[i], usage);
            return 2;
        }
    }
    if (what != L"S" && what != L"C" && what != L"E" && what != L"call") {
        std::fputws(usage, stderr);
        return 2;
    }
    for (const wchar_t event : what == L"call" ? std::wstring(L"SCE") : what) {
        if (!Send(call, event))
            return 1;
    }
    return 0;
}
