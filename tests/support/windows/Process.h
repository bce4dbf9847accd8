#pragma once

#include <string>
#include <vector>

#include "support/windows/KernelHandle.h"
#include "support/windows/Waiting.h"

namespace test_support {

// A started program. One that still runs at the end is ended.
class Process {
public:
    Process() = default;
    // The program's command line is its quoted path, a blank, and these arguments as they stand.
    // What it writes goes into the output file when one is given.
    Process(const std::wstring& program, const std::wstring& arguments,
            const std::wstring& outputFile = {});
    // The program of this name that one process started, be that one still running or not, and that
    // still runs; not started when there is none.
    static Process ChildOf(DWORD parent, const std::wstring& program);
    Process(Process&&) noexcept = default;
    Process& operator=(Process&&) noexcept = default;
    ~Process();

    bool started() const { return handle_.valid(); }
    bool running() const;
    DWORD id() const { return id_; }
    HANDLE handle() const { return handle_.get(); }
    bool WaitForEnd(DWORD milliseconds = patience) const;
    DWORD exitCode() const;
    void Terminate();

private:
    KernelHandle handle_;
    DWORD id_ = 0;
};

// The ids of all processes of the program of this name.
std::vector<DWORD> ProcessesOf(const std::wstring& program);

// Runs a program to its end and answers its exit code.
DWORD RunToEnd(const std::wstring& program, const std::wstring& arguments);

}  // namespace test_support
