#include "platform/WindowsProcesses.h"

#include <array>

#include "platform/kit/AnsiText.h"
#include "platform/kit/Windows.h"

#include <tlhelp32.h>

namespace corvane {

WindowsProcesses::~WindowsProcesses() {
    for (HANDLE process : opened_)
        CloseHandle(process);
}

ProcessId WindowsProcesses::OwnProcessId() const {
    return GetCurrentProcessId();
}

SystemResult<std::uint32_t> WindowsProcesses::SessionOf(ProcessId id) const {
    DWORD session = 0;
    if (!ProcessIdToSessionId(id, &session))
        return {std::nullopt, GetLastError()};
    return {session, 0};
}

std::vector<ProcessEntry> WindowsProcesses::Snapshot() const {
    std::vector<ProcessEntry> processes;
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    if (snapshot == INVALID_HANDLE_VALUE)
        return processes;
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof(entry);
    for (BOOL more = Process32FirstW(snapshot, &entry); more;
         more = Process32NextW(snapshot, &entry)) {
        processes.push_back(
            {entry.th32ProcessID, std::wstring(entry.szExeFile, std::size(entry.szExeFile))});
        entry.dwSize = sizeof(entry);
    }
    CloseHandle(snapshot);
    return processes;
}

SystemResult<ProcessHandle> WindowsProcesses::OpenForQuery(ProcessId id) {
    const HANDLE process = OpenProcess(PROCESS_QUERY_INFORMATION, FALSE, id);
    if (!process)
        return {std::nullopt, GetLastError()};
    opened_.push_back(process);
    return {static_cast<ProcessHandle>(reinterpret_cast<LONG_PTR>(process)), 0};
}

std::optional<std::wstring> WindowsProcesses::ImagePath(ProcessHandle handle) const {
    std::array<char, MAX_PATH> path{};
    auto length = static_cast<DWORD>(path.size());
    if (!QueryFullProcessImageNameA(reinterpret_cast<HANDLE>(static_cast<LONG_PTR>(handle)), 0,
                                    path.data(), &length)) {
        return std::nullopt;
    }
    return TextFromAnsi({path.data(), length});
}

bool WindowsProcesses::StartHidden(const std::wstring& commandLine) {
    std::wstring command = commandLine;  // CreateProcess may write into it
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_HIDE;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr,
                        nullptr, &startup, &process)) {
        return false;
    }
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return true;
}

}  // namespace corvane
