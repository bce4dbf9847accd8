#include "platform/MshtmlDocument.h"

#include "util/BuiltInHtmlDocument.h"

namespace corvane {

namespace {

// The class of HTMLDocument objects.
constexpr CLSID htmlDocumentClass = {
    0x25336920, 0x03F9, 0x11CF, {0x8F, 0xD0, 0x00, 0xAA, 0x00, 0x68, 0x6F, 0x13}};

constexpr std::wstring_view emptyBody = L"<body></body>";

}  // namespace

std::unique_ptr<MshtmlDocument> MshtmlDocument::Create() {
    Microsoft::WRL::ComPtr<IDispatch> document;
    if (FAILED(CoCreateInstance(htmlDocumentClass, nullptr, CLSCTX_INPROC_SERVER,
                                __uuidof(IDispatch),
                                reinterpret_cast<void**>(document.GetAddressOf())))) {
        return nullptr;
    }
    SitedDocument sited = ForbidActiveContent(*document.Get());
    if (!sited)
        return nullptr;
    return std::make_unique<MshtmlDocument>(DispatchObject(std::move(document)), std::move(sited));
}

void MshtmlDocument::InsertAtStartOfBody(const std::wstring& existingHtml,
                                         const std::wstring& fragment) {
    document_.Call(L"open", L"about:blank");
    document_.Call(L"write", existingHtml);
    // An empty text brings no body, nor does one that ends before it.
    if (!document_.FindMember(L"body"))
        document_.Call(L"write", emptyBody);
    document_.GetMember(L"body").Call(L"insertAdjacentHTML", L"afterBegin", fragment);
    document_.Call(L"close");
}

bool MshtmlDocument::Complete() const {
    return document_.GetText(L"readyState") == L"complete";
}

std::wstring MshtmlDocument::Serialise() const {
    return document_.GetMember(L"documentElement").GetText(L"outerHTML");
}

std::wstring MshtmlDocument::VisibleText(const std::wstring& html) {
    // A new document has none before something is written into it.
    if (!document_.FindMember(L"body")) {
        document_.Call(L"open", L"about:blank");
        document_.Call(L"write", emptyBody);
        document_.Call(L"close");
    }
    const DispatchObject body = document_.GetMember(L"body");
    body.Put(L"innerHTML", html);
    return body.GetText(L"innerText");
}

std::unique_ptr<HtmlDocument> NewHtmlDocument() {
    if (auto engine = MshtmlDocument::Create())
        return engine;
    return std::make_unique<BuiltInHtmlDocument>();
}

}  // namespace corvane
