#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "seams/HtmlDocument.h"

namespace corvane {

class Clock;
class Form;
class StatusWriter;
class WindowCommands;
struct RecordingLinkState;

// Puts the Reference and the recording link into GoldMine's open Complete Call dialog, in front
// of what stands there.
class HtmlNotes {
public:
    using DocumentFactory = std::function<std::unique_ptr<HtmlDocument>()>;

    // The form's name is part of the source of the time-out error: "<program>.<form>.<procedure>".
    HtmlNotes(Form& form, WindowCommands& windows, StatusWriter& status, Clock& clock,
              DocumentFactory newDocument, std::wstring programName);

    // Raises with "AddRefAndNotesToOpenCallDialog: " before the description.
    void AddRefAndNotesToOpenCallDialog(std::int32_t windowHandle, const std::wstring& refText,
                                        const RecordingLinkState& link);

    // The new document text. Raises with "PrependHTMLToBody: " before the description; the
    // time-out after eleven waits of a second is such an error.
    [[nodiscard]] std::wstring PrependHTMLToBody(const std::wstring& existing,
                                                 const std::wstring& fragment);

    [[nodiscard]] std::wstring HTMLToText(const std::wstring& html);

private:
    std::wstring NotesWithAddition(const std::wstring& notes, const std::wstring& addition);

    Form& form_;
    WindowCommands& windows_;
    StatusWriter& status_;
    Clock& clock_;
    DocumentFactory newDocument_;
    std::wstring programName_;
};

}  // namespace corvane
