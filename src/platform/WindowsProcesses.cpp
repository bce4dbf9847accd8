#include "platform/WindowsProcesses.h"

#include <array>
#include <utility>

#include "platform/kit/AnsiText.h"

#include <tlhelp32.h>

namespace corvane {

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
    const UniqueHandle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof(entry);
    for (BOOL more = snapshot && Process32FirstW(snapshot.get(), &entry); more;
         more = Process32NextW(snapshot.get(), &entry)) {
        processes.push_back(
            {entry.th32ProcessID, std::wstring(entry.szExeFile, std::size(entry.szExeFile))});
        entry.dwSize = sizeof(entry);
    }
    return processes;
}

SystemResult<ProcessHandle> WindowsProcesses::OpenForQuery(ProcessId id) {
    UniqueHandle process(OpenProcess(PROCESS_QUERY_INFORMATION, FALSE, id));
    if (!process)
        return {std::nullopt, GetLastError()};
    const auto handle = reinterpret_cast<LONG_PTR>(process.get());
    opened_.push_back(std::move(process));
    return {static_cast<ProcessHandle>(handle), 0};
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

bool WindowsProcesses::StartHidden(const std::wstring& program, const std::wstring& commandLine) {
    std::wstring command = commandLine;  // CreateProcess may write into it
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_HIDE;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(program.c_str(), command.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW,
                        nullptr, nullptr, &startup, &process)) {
        return false;
    }
    const UniqueHandle thread(process.hThread);
    const UniqueHandle started(process.hProcess);
    return true;
}

}  // namespace corvane
