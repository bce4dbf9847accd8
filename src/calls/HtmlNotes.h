#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "seams/HtmlDocument.h"

namespace corvane {

class Clock;
class StatusWriter;

// The editing of HTML notes, on an HTML engine.
class HtmlNotes {
public:
    using DocumentFactory = std::function<std::unique_ptr<HtmlDocument>()>;

    // The program's name is part of the source of the time-out error:
    // "<program>.<form>.<procedure>".
    HtmlNotes(StatusWriter& status, Clock& clock, DocumentFactory newDocument,
              std::wstring programName)
        : status_(status),
          clock_(clock),
          newDocument_(std::move(newDocument)),
          programName_(std::move(programName)) {}

    // The new document text. Raises with "PrependHTMLToBody: " before the description; the
    // time-out after eleven waits of a second is such an error.
    [[nodiscard]] std::wstring PrependHTMLToBody(const std::wstring& existing,
                                                 const std::wstring& fragment);

    // The visible text. Raises with "HTMLToText: " before the description.
    [[nodiscard]] std::wstring HTMLToText(const std::wstring& html);

private:
    StatusWriter& status_;
    Clock& clock_;
    DocumentFactory newDocument_;
    std::wstring programName_;
};

}  // namespace corvane
