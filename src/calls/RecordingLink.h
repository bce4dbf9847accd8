#pragma once

#include <string>

#include "calls/RecordingLinkState.h"
#include "seams/FileSystem.h"

namespace corvane {

class Clock;
class Form;
class MessageBoxes;
class StatusWriter;

// Finds the recording of the call, the newest file in the configured folder, and makes the link
// that goes into the history item's notes.
class RecordingLink {
public:
    RecordingLink(Form& form, const FileSystem& files, StatusWriter& status, MessageBoxes& boxes,
                  Clock& clock);

    // True when a link was prepared. Otherwise the state holds the reason, which was reported.
    // Errors other than "permission denied" are raised with "GetFileLink: " before the
    // description.
    bool GetFileLink(RecordingLinkState& state);

    // The user leaves txtLinkedItemPath: false keeps the focus in the box.
    [[nodiscard]] bool MayLeaveFolder();

    // Searches the folder and reports what was seen.
    [[nodiscard]] NewestFile FindNewestFile(const std::wstring& folderText);

private:
    [[nodiscard]] bool PrepareLink(RecordingLinkState& state);
    [[nodiscard]] bool Fail(RecordingLinkState& state, std::wstring reason);
    // Why the file is too old, or nothing.
    [[nodiscard]] std::wstring ReasonOfAge(const NewestFile& newest,
                                           const std::wstring& fullPath) const;

    Form& form_;
    const FileSystem& files_;
    StatusWriter& status_;
    MessageBoxes& boxes_;
    Clock& clock_;
};

}  // namespace corvane
