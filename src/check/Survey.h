#pragma once

#include <optional>
#include <string>
#include <vector>

#include "seams/Processes.h"

namespace corvane {

// What the program itself never asks of the system. Nothing is changed by asking.
class Survey {
public:
    virtual ~Survey() = default;
    // Whether a process was given an administrator's rights that the user's other programs lack;
    // nothing when it cannot be told.
    [[nodiscard]] virtual std::optional<bool> Elevated(ProcessId id) const = 0;
    // Whether the user may make a file in the folder.
    [[nodiscard]] virtual bool MayAddTo(const std::wstring& folder) const = 0;
    [[nodiscard]] virtual bool MayList(const std::wstring& folder) const = 0;
    // Why the user may not append to a file, which need not be there yet; empty when he may.
    [[nodiscard]] virtual std::wstring WhyNotAppendTo(const std::wstring& file) const = 0;
    // The texts of the message boxes that a process shows.
    [[nodiscard]] virtual std::vector<std::wstring> BoxesOf(ProcessId id) const = 0;
    // The version of a program or DLL, one without a path being Windows' own; empty when it has
    // none.
    [[nodiscard]] virtual std::wstring FileVersion(const std::wstring& file) const = 0;
    // Reads how GoldMine's automation is registered. Raises error 429 when it is not.
    virtual void ReadAutomationClass() const = 0;
};

}  // namespace corvane
