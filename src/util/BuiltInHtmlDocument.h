#pragma once

#include <string>

#include "seams/HtmlDocument.h"

namespace corvane {

// Notes editing on the text level, where the HTML engine is missing: the old content is kept byte
// for byte.
class BuiltInHtmlDocument final : public HtmlDocument {
public:
    void InsertAtStartOfBody(const std::wstring& existingHtml,
                             const std::wstring& fragment) override;
    [[nodiscard]] bool Complete() const override { return true; }
    [[nodiscard]] std::wstring Serialise() const override { return document_; }
    [[nodiscard]] std::wstring VisibleText(const std::wstring& html) override;

private:
    std::wstring document_;
};

}  // namespace corvane
