#pragma once

#include <memory>

#include "platform/kit/Dispatch.h"
#include "seams/HtmlDocument.h"

namespace corvane {

// Windows' own HTML engine.
class MshtmlDocument final : public HtmlDocument {
public:
    // Nothing where the engine cannot be created.
    [[nodiscard]] static std::unique_ptr<MshtmlDocument> Create();

    explicit MshtmlDocument(DispatchObject document) : document_(std::move(document)) {}

    void InsertAtStartOfBody(const std::wstring& existingHtml,
                             const std::wstring& fragment) override;
    [[nodiscard]] bool Complete() const override;
    [[nodiscard]] std::wstring Serialise() const override;
    [[nodiscard]] std::wstring VisibleText(const std::wstring& html) override;

private:
    DispatchObject document_;
};

// The engine's document, or the built-in one where the engine is missing.
[[nodiscard]] std::unique_ptr<HtmlDocument> NewHtmlDocument();

}  // namespace corvane
