#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

#include "seams/Processes.h"

namespace corvane {

class Form;
class MessageBoxes;
class StatusWriter;

// Finds the GoldMine client that runs in the user's own Windows session.
class GoldMineProcess {
public:
    GoldMineProcess(Form& form, Processes& processes, StatusWriter& status, MessageBoxes& boxes);

    // Whether a client runs and its path could be read; kept as the form's GoldMineRunning, the
    // path as GoldMineExePath and in the Paths page.
    bool FindGoldMineExecutable();

    // Whether the last check found a client, be its path readable or not.
    [[nodiscard]] bool clientFound() const { return clientFound_; }

    // The id of the client, asked of the system anew; nothing is shown or kept.
    [[nodiscard]] std::optional<ProcessId> RunningClient() const;

    // The id of a process of this session with exactly that file name. Raises when the program's
    // own session cannot be determined.
    [[nodiscard]] std::optional<ProcessId> IsProcessRunning(std::wstring_view executableName) const;

private:
    // The first of the names that runs, in one look at the system: to list the processes takes
    // long.
    [[nodiscard]] std::optional<ProcessId> FirstRunning(
        std::initializer_list<std::wstring_view> executableNames) const;
    // True with the path, false with the reason in its place.
    [[nodiscard]] bool GetProcessPath(ProcessId id, std::wstring& pathOrReason) const;
    [[nodiscard]] bool GetProcessImagePath(ProcessHandle handle, std::wstring& pathOrReason) const;
    [[nodiscard]] bool FindExecutable();

    Form& form_;
    Processes& processes_;
    StatusWriter& status_;
    MessageBoxes& boxes_;
    bool clientFound_ = false;
};

}  // namespace corvane
