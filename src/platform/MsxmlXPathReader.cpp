#include "platform/MsxmlXPathReader.h"

#include "platform/kit/Bstr.h"
#include "platform/kit/ComError.h"

#include <msxml2.h>
#include <wrl/client.h>

namespace corvane {

namespace {

using Microsoft::WRL::ComPtr;

// Missing from the import libraries of some compilers.
constexpr IID domDocument2 = {
    0x2933BF95, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

ComPtr<IXMLDOMDocument2> NewDocument() {
    ComPtr<IXMLDOMDocument2> document;
    // Version 3 is part of every Windows; 6 is preferred where it is installed.
    constexpr CLSID domDocument60 = {
        0x88d96a05, 0xf192, 0x11d4, {0xa6, 0x5f, 0x00, 0x40, 0x96, 0x32, 0x51, 0xe5}};
    constexpr CLSID domDocument30 = {
        0xf5078f32, 0xc551, 0x11d3, {0x89, 0xb9, 0x00, 0x00, 0xf8, 0x1f, 0xe2, 0x21}};
    HRESULT created = E_FAIL;
    for (const CLSID& version : {domDocument60, domDocument30}) {
        created = CoCreateInstance(version, nullptr, CLSCTX_INPROC_SERVER, domDocument2,
                                   reinterpret_cast<void**>(document.GetAddressOf()));
        if (SUCCEEDED(created))
            return document;
    }
    throw ErrorFromHResult(created);
}

}  // namespace

std::optional<std::wstring> MsxmlXPathReader::SelectNode(const std::wstring& reply,
                                                         const std::wstring& expression,
                                                         NodeForm form, WhiteSpace space) const {
    const ComPtr<IXMLDOMDocument2> document = NewDocument();
    ThrowIfFailed(document->put_async(VARIANT_FALSE));
    if (space == WhiteSpace::Kept)
        ThrowIfFailed(document->put_preserveWhiteSpace(VARIANT_TRUE));
    VARIANT_BOOL loaded = VARIANT_FALSE;
    ThrowIfFailed(document->loadXML(Bstr(reply).get(), &loaded));
    if (loaded == VARIANT_FALSE)
        return std::nullopt;
    Variant language(std::wstring_view(L"XPath"));
    ThrowIfFailed(document->setProperty(Bstr(L"SelectionLanguage").get(), *language.get()));

    ComPtr<IXMLDOMElement> element;
    ThrowIfFailed(document->get_documentElement(element.GetAddressOf()));
    if (!element)
        return std::nullopt;
    ComPtr<IXMLDOMNode> node;
    const HRESULT selected = element->selectSingleNode(Bstr(expression).get(), node.GetAddressOf());
    ThrowIfFailed(selected);
    if (!node)
        return std::wstring();
    Bstr text;
    ThrowIfFailed(form == NodeForm::Text ? node->get_text(text.put()) : node->get_xml(text.put()));
    return text.text();
}

}  // namespace corvane
