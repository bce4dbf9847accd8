#include "platform/MsxmlXPathReader.h"

#include "platform/kit/Bstr.h"
#include "platform/kit/ComError.h"
#include "platform/kit/XmlDocument.h"

namespace corvane {

namespace {

using Microsoft::WRL::ComPtr;

ComPtr<IXMLDOMDocument2> NewDocument() {
    try {
        return NewXmlDocument(xmlDocument6);
    } catch (const RuntimeError&) {
        return NewXmlDocument(xmlDocument3);
    }
}

}  // namespace

std::optional<std::wstring> MsxmlXPathReader::SelectNode(const std::wstring& reply,
                                                         const std::wstring& expression,
                                                         NodeForm form, WhiteSpace space) const {
    const ComPtr<IXMLDOMDocument2> document = NewDocument();
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
