#pragma once

#include <memory>
#include <string>
#include <utility>

#include "platform/HtmlClientSite.h"
#include "platform/kit/Dispatch.h"
#include "seams/HtmlDocument.h"

namespace corvane {

// Windows' own HTML engine. Notes hold mail of strangers: it neither runs nor loads anything.
class MshtmlDocument final : public HtmlDocument {
public:
    // Nothing where the engine cannot be created, or cannot be kept from active content.
    [[nodiscard]] static std::unique_ptr<MshtmlDocument> Create();

    MshtmlDocument(DispatchObject document, SitedDocument sited)
        : document_(std::move(document)), sited_(std::move(sited)) {}

    void InsertAtStartOfBody(const std::wstring& existingHtml,
                             const std::wstring& fragment) override;
    [[nodiscard]] bool Complete() const override;
    [[nodiscard]] std::wstring Serialise() const override;
    [[nodiscard]] std::wstring VisibleText(const std::wstring& html) override;

private:
    DispatchObject document_;
    SitedDocument sited_;  // the same object
};

// The engine's document, or the built-in one where there is none.
[[nodiscard]] std::unique_ptr<HtmlDocument> NewHtmlDocument();

}  // namespace corvane
