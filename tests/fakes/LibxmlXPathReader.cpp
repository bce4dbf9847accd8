#include "fakes/LibxmlXPathReader.h"

#include <libxml/parser.h>
#include <libxml/xpath.h>

#include <memory>
#include <string_view>

#include "util/RuntimeError.h"

namespace corvane::test {

namespace {

std::string Utf8(std::wstring_view text) {
    std::string bytes;
    for (const wchar_t character : text) {
        const auto code = static_cast<std::uint32_t>(character);
        const auto add = [&](std::uint32_t byte) { bytes += static_cast<char>(byte); };
        if (code < 0x80) {
            add(code);
        } else if (code < 0x800) {
            add(0xC0 | code >> 6);
            add(0x80 | (code & 0x3F));
        } else if (code < 0x10000) {
            add(0xE0 | code >> 12);
            add(0x80 | (code >> 6 & 0x3F));
            add(0x80 | (code & 0x3F));
        } else {
            add(0xF0 | code >> 18);
            add(0x80 | (code >> 12 & 0x3F));
            add(0x80 | (code >> 6 & 0x3F));
            add(0x80 | (code & 0x3F));
        }
    }
    return bytes;
}

std::wstring Wide(std::string_view bytes) {
    std::wstring text;
    for (std::size_t at = 0; at < bytes.size();) {
        const auto lead = static_cast<unsigned char>(bytes[at]);
        const int length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        std::uint32_t code = length == 1 ? lead : lead & (0xFFU >> (length + 1));
        for (int each = 1; each < length; ++each) {
            code = code << 6 |
                   (static_cast<unsigned char>(bytes[at + static_cast<std::size_t>(each)]) & 0x3F);
        }
        text += static_cast<wchar_t>(code);
        at += static_cast<std::size_t>(length);
    }
    return text;
}

const xmlChar* XmlText(const std::string& text) {
    return reinterpret_cast<const xmlChar*>(text.c_str());
}

std::wstring Taken(xmlChar* owned) {
    const std::unique_ptr<xmlChar, decltype(xmlFree)> owner(owned, xmlFree);
    return owned ? Wide(reinterpret_cast<const char*>(owned)) : std::wstring();
}

// As the program's reader trims a text by itself.
std::wstring Trimmed(const std::wstring& text) {
    constexpr const wchar_t* whiteSpace = L" \t\r\n";
    const auto first = text.find_first_not_of(whiteSpace);
    if (first == std::wstring::npos)
        return {};
    return text.substr(first, text.find_last_not_of(whiteSpace) - first + 1);
}

}  // namespace

std::optional<std::wstring> LibxmlXPathReader::SelectNode(const std::wstring& reply,
                                                          const std::wstring& expression,
                                                          NodeForm form, WhiteSpace space) const {
    const std::string xml = Utf8(reply);
    const std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)> document(
        xmlReadMemory(xml.data(), static_cast<int>(xml.size()), nullptr, "UTF-8",
                      XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_HUGE),
        &xmlFreeDoc);
    if (!document)
        return std::nullopt;
    const std::unique_ptr<xmlXPathContext, decltype(&xmlXPathFreeContext)> context(
        xmlXPathNewContext(document.get()), &xmlXPathFreeContext);
    const std::string path = Utf8(expression);
    const std::unique_ptr<xmlXPathObject, decltype(&xmlXPathFreeObject)> result(
        xmlXPathEvalExpression(XmlText(path), context.get()), &xmlXPathFreeObject);
    if (!result)
        throw MakeRuntimeError(ErrorNumber::InvalidProcedureCall);
    if (xmlXPathNodeSetIsEmpty(result->nodesetval))
        return std::wstring();
    xmlNode* node = result->nodesetval->nodeTab[0];
    if (form == NodeForm::Text) {
        const std::wstring text = Taken(xmlNodeGetContent(node));
        return space == WhiteSpace::Kept ? text : Trimmed(text);
    }
    const std::unique_ptr<xmlBuffer, decltype(&xmlBufferFree)> buffer(xmlBufferCreate(),
                                                                      &xmlBufferFree);
    xmlNodeDump(buffer.get(), document.get(), node, 0, 0);
    return Wide(reinterpret_cast<const char*>(xmlBufferContent(buffer.get())));
}

}  // namespace corvane::test
