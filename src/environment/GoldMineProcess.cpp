#include "environment/GoldMineProcess.h"

#include <vector>

#include "seams/MessageBoxes.h"
#include "seams/StatusWriter.h"
#include "ui/form/Form.h"
#include "util/RuntimeError.h"
#include "util/Text.h"

namespace corvane {

namespace {

std::wstring ExecutableName(std::wstring_view nameField) {
    if (nameField.starts_with(L'\0'))
        nameField.remove_prefix(1);
    return std::wstring(TrimBlanks(nameField.substr(0, nameField.find(L'\0'))));
}

}  // namespace

GoldMineProcess::GoldMineProcess(Form& form, Processes& processes, StatusWriter& status,
                                 MessageBoxes& boxes)
    : form_(form), processes_(processes), status_(status), boxes_(boxes) {}

std::optional<ProcessId> GoldMineProcess::IsProcessRunning(std::wstring_view executableName) const {
    return FirstRunning({executableName});
}

std::optional<ProcessId> GoldMineProcess::FirstRunning(
    std::initializer_list<std::wstring_view> executableNames) const {
    const ProcessId own = processes_.OwnProcessId();
    const auto ownSession = processes_.SessionOf(own);
    if (!ownSession.value) {
        RuntimeError error = MakeRuntimeError(ErrorNumber::InvalidProcedureCall);
        error.description =
            Join(L"IsProcessRunning.ProcessIdToSessionId", lineBreak,
                 L"Could not determine Session ID for current Process ID ", std::to_wstring(own),
                 L".", lineBreak, L"LastError ", std::to_wstring(ownSession.lastError), L".");
        throw error;
    }
    const std::vector<ProcessEntry> entries = processes_.Snapshot();
    for (const std::wstring_view executableName : executableNames) {
        for (const ProcessEntry& entry : entries) {
            // On a terminal server, other users' clients run beside ours.
            if (ExecutableName(entry.nameField) == executableName &&
                processes_.SessionOf(entry.id).value == ownSession.value)
                return entry.id;
        }
    }
    return std::nullopt;
}

bool GoldMineProcess::GetProcessPath(ProcessId id, std::wstring& pathOrReason) const {
    const auto opened = processes_.OpenForQuery(id);
    if (!opened.value) {
        pathOrReason = Join(L"Error ", std::to_wstring(opened.lastError), L" opening Process ID ",
                            std::to_wstring(id));
        return false;
    }
    return GetProcessImagePath(*opened.value, pathOrReason);
}

bool GoldMineProcess::GetProcessImagePath(ProcessHandle handle, std::wstring& pathOrReason) const {
    const auto path = processes_.ImagePath(handle);
    pathOrReason =
        path ? *path
             : Join(L"Error retrieving full path from Process Handle ", std::to_wstring(handle));
    return path.has_value();
}

bool GoldMineProcess::FindGoldMineExecutable() {
    form_.GoldMineRunning =
        NamedProcedure(L"FindGoldMineExecutable", [this] { return FindExecutable(); });
    return form_.GoldMineRunning;
}

std::optional<ProcessId> GoldMineProcess::RunningClient() const {
    return FirstRunning({L"gmw.exe", L"gmw6.exe"});
}

bool GoldMineProcess::FindExecutable() {
    const auto id = RunningClient();
    clientFound_ = id.has_value();
    if (!id)
        return false;

    // Process ids are shown signed, as the system's tools of the time did.
    const auto signedId = static_cast<std::int32_t>(*id);
    if (signedId <= 0) {
        const std::wstring invalid =
            Join(L"GoldMine is running but returned an invalid Process ID ",
                 std::to_wstring(signedId), L".");
        boxes_.Notify(invalid, BoxIcon::Exclamation);
        status_.WriteStatus(invalid);
        return false;
    }
    std::wstring pathOrReason;
    if (!GetProcessPath(*id, pathOrReason)) {
        const std::wstring noPath =
            Join(L"GoldMine is running but could not retrieve its path.", lineBreak,
                 L"Do not run GoldMine as Administrator.", lineBreak, L"(", pathOrReason, L")");
        boxes_.Notify(noPath, BoxIcon::Exclamation);
        status_.WriteStatus(ReplaceAll(noPath, lineBreak, L" "));
        return false;
    }
    form_.GoldMineExePath = pathOrReason;
    form_.lblParam(ParamLabel::goldMinePath).setCaption(L"Path to GoldMine executable:");
    form_.txtGMInstallDir.setText(pathOrReason);
    form_.txtGMInstallDir.setTooltip(pathOrReason);
    return true;
}

}  // namespace corvane
