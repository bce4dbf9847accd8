#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace practice {

struct XmlElement {
    std::wstring name;
    std::vector<std::pair<std::wstring, std::wstring>> attributes;
    std::wstring text;  // the element's own text, without that of its children
    std::vector<XmlElement> children;

    // The attribute's value, "" when there is none.
    [[nodiscard]] std::wstring_view Attribute(std::wstring_view attributeName) const;
};

struct XmlResult {
    XmlElement root;
    std::wstring error;  // "" when the text was well-formed
};

// Reads one XML document. Line ends become LF, as in every XML reader; document types are refused.
XmlResult ParseXml(std::wstring_view text);

// Escapes the five XML characters once.
std::wstring EscapeXml(std::wstring_view text);

}  // namespace practice
