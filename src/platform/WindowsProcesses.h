#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/kit/Handles.h"
#include "seams/Processes.h"

namespace corvane {

class WindowsProcesses final : public Processes {
public:
    [[nodiscard]] ProcessId OwnProcessId() const override;
    [[nodiscard]] SystemResult<std::uint32_t> SessionOf(ProcessId id) const override;
    [[nodiscard]] std::vector<ProcessEntry> Snapshot() const override;
    [[nodiscard]] SystemResult<ProcessHandle> OpenForQuery(ProcessId id) override;
    [[nodiscard]] std::optional<std::wstring> ImagePath(ProcessHandle handle) const override;
    [[nodiscard]] bool StartHidden(const std::wstring& program,
                                   const std::wstring& commandLine) override;

private:
    std::vector<UniqueHandle> opened_;
};

}  // namespace corvane
