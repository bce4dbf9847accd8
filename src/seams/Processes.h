#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

using ProcessId = std::uint32_t;

struct ProcessEntry {
    ProcessId id = 0;
    std::wstring nameField;  // the system's fixed field of 260 characters, NULs included
};

// What the system says of an attempt: a value, or its error code.
template <class Value>
struct SystemResult {
    std::optional<Value> value;
    std::uint32_t lastError = 0;
};

// An opened process, as the number that support staff see in messages.
using ProcessHandle = std::int32_t;

// The processes of this computer and the start of new ones.
class Processes {
public:
    virtual ~Processes() = default;
    [[nodiscard]] virtual ProcessId OwnProcessId() const = 0;
    [[nodiscard]] virtual SystemResult<std::uint32_t> SessionOf(ProcessId id) const = 0;
    [[nodiscard]] virtual std::vector<ProcessEntry> Snapshot() const = 0;
    // Query-information access. The process stays open for the run, which keeps its id from being
    // given to another.
    [[nodiscard]] virtual SystemResult<ProcessHandle> OpenForQuery(ProcessId id) = 0;
    [[nodiscard]] virtual std::optional<std::wstring> ImagePath(ProcessHandle handle) const = 0;
    // Starts this program, looked for nowhere else, on a command line with its window hidden,
    // without waiting for its end. False when no process was created.
    [[nodiscard]] virtual bool StartHidden(const std::wstring& program,
                                           const std::wstring& commandLine) = 0;
};

}  // namespace corvane
