#pragma once

#include <string>

namespace corvane {

// The recording link of the call in progress: cleared by the dispatcher, filled by GetFileLink,
// put into the notes by the history.
struct RecordingLinkState {
    std::wstring RecordingPathOrReason;  // the file's path, or why there is no link
    std::wstring LinkHTML;               // the anchor element; empty without a link
    std::wstring LinkDocumentHTML;       // a whole document holding the anchor

    [[nodiscard]] bool linkPrepared() const { return !LinkHTML.empty(); }
};

}  // namespace corvane
