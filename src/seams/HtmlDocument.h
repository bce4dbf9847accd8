#pragma once

#include <string>

namespace corvane {

// What the notes need of an HTML engine. One object serves one operation.
class HtmlDocument {
public:
    virtual ~HtmlDocument() = default;
    // Takes the existing document and puts the fragment at the start of its body. Raises.
    virtual void InsertAtStartOfBody(const std::wstring& existingHtml,
                                     const std::wstring& fragment) = 0;
    // Whether the document of InsertAtStartOfBody is complete.
    [[nodiscard]] virtual bool Complete() const = 0;
    // The whole document as the engine writes it.
    [[nodiscard]] virtual std::wstring Serialise() const = 0;
    // The visible text of an HTML text, a whole document or a fragment.
    [[nodiscard]] virtual std::wstring VisibleText(const std::wstring& html) = 0;
};

}  // namespace corvane
