#include "Process.h"

#include <gtest/gtest.h>

#include <tlhelp32.h>

#include "Text.h"

namespace end_to_end {
namespace {

constexpr DWORD windowAnswerTime = 5'000;

struct Visit {
    DWORD processId;
    const std::function<bool(HWND)>& visit;
};

BOOL CALLBACK VisitWindow(HWND window, LPARAM parameter) {
    const auto& visit = *reinterpret_cast<const Visit*>(parameter);
    DWORD processId = 0;
    GetWindowThreadProcessId(window, &processId);
    return processId != visit.processId || visit.visit(window);
}

}  // namespace

bool WaitUntil(const std::function<bool()>& condition) {
    const ULONGLONG deadline = GetTickCount64() + patience;
    while (!condition()) {
        if (GetTickCount64() > deadline) {
            return false;
        }
        Sleep(5);
    }
    return true;
}

Process::Process(const std::wstring& program, const std::wstring& arguments) {
    std::wstring line = L"\"" + program + L"\" " + arguments;
    STARTUPINFOW startUp{};
    startUp.cb = sizeof startUp;
    PROCESS_INFORMATION information{};
    // Under load, once in some thousand starts, Wine loses a process before it has begun. Nothing
    // of the program has run then.
    constexpr int tries = 3;
    DWORD error = ERROR_INTERNAL_ERROR;
    for (int attempt = 0; attempt < tries && error == ERROR_INTERNAL_ERROR; ++attempt) {
        const bool started = CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, FALSE,
                                            0, nullptr, nullptr, &startUp, &information) != FALSE;
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
    const KernelHandle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    Process child;
    for (BOOL more = Process32FirstW(snapshot.get(), &entry); more && !child.running();
         more = Process32NextW(snapshot.get(), &entry)) {
        // The id of a parent that ended long ago may be another's by now.
        if (entry.th32ParentProcessID == parent && program == entry.szExeFile) {
            constexpr DWORD rights = PROCESS_TERMINATE | PROCESS_QUERY_INFORMATION | SYNCHRONIZE;
            child.handle_ = KernelHandle(OpenProcess(rights, FALSE, entry.th32ProcessID));
            child.id_ = entry.th32ProcessID;
        }
    }
    return child;
}

Process::~Process() {
    if (running()) {
        Terminate();
    }
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
    WaitForEnd(patience);
}

DWORD RunToEnd(const std::wstring& program, const std::wstring& arguments) {
    const Process process(program, arguments);
    EXPECT_TRUE(process.WaitForEnd(patience)) << Utf8(program + L" " + arguments);
    return process.exitCode();
}

void ForEachWindow(DWORD processId, const std::function<bool(HWND)>& visit) {
    const Visit parameter{processId, visit};
    EnumWindows(VisitWindow, reinterpret_cast<LPARAM>(&parameter));
}

std::wstring WindowClassOf(HWND window) {
    wchar_t name[256];
    return std::wstring(name, static_cast<size_t>(GetClassNameW(window, name, 256)));
}

std::wstring WindowTextOf(HWND window) {
    DWORD_PTR length = 0;
    SendMessageTimeoutW(window, WM_GETTEXTLENGTH, 0, 0, SMTO_ABORTIFHUNG, windowAnswerTime,
                        &length);
    std::wstring text(length + 1, L'\0');
    DWORD_PTR copied = 0;
    SendMessageTimeoutW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()),
                        SMTO_ABORTIFHUNG, windowAnswerTime, &copied);
    text.resize(copied);
    return text;
}

}  // namespace end_to_end
