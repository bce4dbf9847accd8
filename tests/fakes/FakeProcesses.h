#pragma once

#include <map>
#include <string>
#include <vector>

#include "seams/Processes.h"

namespace corvane::test {

class FakeProcesses final : public Processes {
public:
    [[nodiscard]] ProcessId OwnProcessId() const override { return own; }
    [[nodiscard]] SystemResult<std::uint32_t> SessionOf(ProcessId id) const override {
        const auto session = sessions.find(id);
        if (session == sessions.end())
            return {std::nullopt, sessionError};
        return {session->second, 0};
    }
    [[nodiscard]] std::vector<ProcessEntry> Snapshot() const override { return entries; }
    [[nodiscard]] SystemResult<ProcessHandle> OpenForQuery(ProcessId id) override {
        if (openError)
            return {std::nullopt, openError};
        return {static_cast<ProcessHandle>(id + 1000), 0};
    }
    [[nodiscard]] std::optional<std::wstring> ImagePath(ProcessHandle handle) const override {
        const auto path = paths.find(static_cast<ProcessId>(handle) - 1000);
        if (path == paths.end())
            return std::nullopt;
        return path->second;
    }
    [[nodiscard]] bool StartHidden(const std::wstring& program,
                                   const std::wstring& commandLine) override {
        startedPrograms.push_back(program);
        started.push_back(commandLine);
        return startSucceeds;
    }

    // A process with its name in the system's field of 260 characters.
    void Add(ProcessId id, const std::wstring& name, std::uint32_t session,
             const std::wstring& path) {
        std::wstring field = name;
        field.resize(260, L'\0');
        entries.push_back({id, field});
        sessions[id] = session;
        paths[id] = path;
    }
    void RunGoldMine() { Add(77, L"gmw.exe", 1, L"C:\\GoldMine\\gmw.exe"); }

    ProcessId own = 42;
    std::map<ProcessId, std::uint32_t> sessions = {{42, 1}};
    std::uint32_t sessionError = 87;
    std::vector<ProcessEntry> entries;
    std::map<ProcessId, std::wstring> paths;
    std::uint32_t openError = 0;
    bool startSucceeds = true;
    std::vector<std::wstring> startedPrograms;
    std::vector<std::wstring> started;  // their command lines
};

}  // namespace corvane::test
