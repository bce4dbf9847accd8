#include "support/windows/Process.h"

#include <gtest/gtest.h>

#include <utility>

#include "support/windows/Encoding.h"

#include <tlhelp32.h>

namespace test_support {
namespace {

// A file that a started program may write to.
KernelHandle CreateOutputFile(const std::wstring& path) {
    SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
    return KernelHandle(CreateFileW(path.c_str(), FILE_APPEND_DATA,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                    &inheritable, CREATE_ALWAYS, 0, nullptr));
}

// Of a program's running processes.
std::vector<PROCESSENTRY32W> EntriesOf(const std::wstring& program) {
    std::vector<PROCESSENTRY32W> entries;
    const KernelHandle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = Process32FirstW(snapshot.get(), &entry); more;
         more = Process32NextW(snapshot.get(), &entry)) {
        if (program == entry.szExeFile)
            entries.push_back(entry);
    }
    return entries;
}

}  // namespace

Process::Process(const std::wstring& program, const std::wstring& arguments,
                 const std::wstring& outputFile) {
    std::wstring line = L"\"" + program + L"\" " + arguments;
    STARTUPINFOW startUp{};
    startUp.cb = sizeof startUp;
    KernelHandle output;
    if (!outputFile.empty()) {
        output = CreateOutputFile(outputFile);
        startUp.dwFlags = STARTF_USESTDHANDLES;
        startUp.hStdOutput = output.get();
        startUp.hStdError = output.get();
    }
    PROCESS_INFORMATION information{};
    // Under load, once in some thousand starts, Wine loses a process before it has begun. Nothing
    // of the program has run then.
    constexpr int tries = 3;
    DWORD error = ERROR_INTERNAL_ERROR;
    for (int attempt = 0; attempt < tries && error == ERROR_INTERNAL_ERROR; ++attempt) {
        const bool started =
            CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, !outputFile.empty(), 0,
                           nullptr, nullptr, &startUp, &information) != FALSE;
        error = started ? ERROR_SUCCESS : GetLastError();
    }
    if (error != ERROR_SUCCESS) {
        ADD_FAILURE() << "error " << error << " starting " << Utf8(line);
        return;
    }
    CloseHandle(information.hThread);
    handle_ = KernelHandle(information.hProcess);
    id_ = information.dwProcessId;
}

Process Process::ChildOf(DWORD parent, const std::wstring& program) {
    Process child;
    for (const PROCESSENTRY32W& entry : EntriesOf(program)) {
        // The id of a parent that ended long ago may be another's by now.
        if (entry.th32ParentProcessID == parent && !child.running()) {
            constexpr DWORD rights = PROCESS_TERMINATE | PROCESS_QUERY_INFORMATION | SYNCHRONIZE;
            child.handle_ = KernelHandle(OpenProcess(rights, FALSE, entry.th32ProcessID));
            child.id_ = entry.th32ProcessID;
        }
    }
    return child.running() ? std::move(child) : Process();
}

Process::~Process() {
    if (running())
        Terminate();
}

bool Process::running() const {
    return started() && WaitForSingleObject(handle_.get(), 0) == WAIT_TIMEOUT;
}

bool Process::WaitForEnd(DWORD milliseconds) const {
    return WaitForSingleObject(handle_.get(), milliseconds) == WAIT_OBJECT_0;
}

DWORD Process::exitCode() const {
    DWORD code = STILL_ACTIVE;
    GetExitCodeProcess(handle_.get(), &code);
    return code;
}

void Process::Terminate() {
    TerminateProcess(handle_.get(), 99);
    WaitForEnd();
}

std::vector<DWORD> ProcessesOf(const std::wstring& program) {
    std::vector<DWORD> ids;
    for (const PROCESSENTRY32W& entry : EntriesOf(program))
        ids.push_back(entry.th32ProcessID);
    return ids;
}

DWORD RunToEnd(const std::wstring& program, const std::wstring& arguments) {
    const Process process(program, arguments);
    EXPECT_TRUE(process.WaitForEnd()) << Utf8(program + L" " + arguments);
    return process.exitCode();
}

}  // namespace test_support
