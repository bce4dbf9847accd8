#pragma once

#include <functional>
#include <string>

#include "Handles.h"

namespace end_to_end {

inline constexpr DWORD patience = 60'000;  // milliseconds until a wait counts as failed

// False when the condition does not hold before the patience is at its end.
bool WaitUntil(const std::function<bool()>& condition);

// A started program. One that still runs at the end is ended.
class Process {
public:
    Process() = default;
    // The program's command line is its quoted path, a blank, and these arguments as they stand.
    Process(const std::wstring& program, const std::wstring& arguments);
    // The program of this name that one process started and that still runs; not started when there
    // is none.
    static Process ChildOf(DWORD parent, const std::wstring& program);
    Process(Process&&) noexcept = default;
    Process& operator=(Process&&) noexcept = default;
    ~Process();

    bool started() const { return handle_.valid(); }
    bool running() const;
    DWORD id() const { return id_; }
    bool WaitForEnd(DWORD milliseconds) const;
    DWORD exitCode() const;
    void Terminate();

private:
    KernelHandle handle_;
    DWORD id_ = 0;
};

// Runs a program to its end and answers its exit code.
DWORD RunToEnd(const std::wstring& program, const std::wstring& arguments);

// Calls for each window of the process that stands on the desktop, till it answers false.
void ForEachWindow(DWORD processId, const std::function<bool(HWND)>& visit);
std::wstring WindowClassOf(HWND window);
// The text of a window or control of any process.
std::wstring WindowTextOf(HWND window);

}  // namespace end_to_end
