#include "platform/kit/XmlDocument.h"

#include "platform/kit/Bstr.h"
#include "platform/kit/ComError.h"

namespace corvane {

void FetchNothing(IXMLDOMDocument2& document) {
    ThrowIfFailed(document.put_resolveExternals(VARIANT_FALSE));
    ThrowIfFailed(document.put_validateOnParse(VARIANT_FALSE));
    // GoldMine's replies have no DTD. An early version 3 does not know the property, and resolves
    // nothing by what was said before.
    Variant prohibited(true);
    static_cast<void>(document.setProperty(Bstr(L"ProhibitDTD").get(), *prohibited.get()));
}

Microsoft::WRL::ComPtr<IXMLDOMDocument2> NewXmlDocument(const CLSID& version) {
    // Missing from the import libraries of some compilers.
    constexpr IID domDocument2 = {
        0x2933BF95, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};
    Microsoft::WRL::ComPtr<IXMLDOMDocument2> document;
    ThrowIfFailed(CoCreateInstance(version, nullptr, CLSCTX_INPROC_SERVER, domDocument2,
                                   reinterpret_cast<void**>(document.GetAddressOf())));
    ThrowIfFailed(document->put_async(VARIANT_FALSE));
    FetchNothing(*document.Get());
    return document;
}

}  // namespace corvane
