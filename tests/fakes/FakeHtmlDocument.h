#pragma once

#include <string>
#include <vector>

#include "seams/HtmlDocument.h"

namespace corvane::test {

// What the documents of one test were asked, and how they behave.
struct HtmlScript {
    std::vector<std::wstring> calls;
    int pollsUntilComplete = 0;  // -1: never complete
    std::wstring serialised;
    std::wstring visibleText;
};

class FakeHtmlDocument final : public HtmlDocument {
public:
    explicit FakeHtmlDocument(HtmlScript& script) : script_(script) {}
    void InsertAtStartOfBody(const std::wstring& existingHtml,
                             const std::wstring& fragment) override {
        script_.calls.push_back(L"insert [" + fragment + L"] before [" + existingHtml + L"]");
    }
    [[nodiscard]] bool Complete() const override {
        return script_.pollsUntilComplete >= 0 && polls_++ >= script_.pollsUntilComplete;
    }
    [[nodiscard]] std::wstring Serialise() const override {
        script_.calls.push_back(L"serialise");
        return script_.serialised;
    }
    [[nodiscard]] std::wstring VisibleText(const std::wstring& html) override {
        script_.calls.push_back(L"text of [" + html + L"]");
        return script_.visibleText;
    }

private:
    HtmlScript& script_;
    mutable int polls_ = 0;
};

}  // namespace corvane::test
