#pragma once

#include <string>

namespace corvane {

enum class NodeForm { Text, Xml };

// Reads one node out of an XML reply; MsxmlXPathReader is the real one.
class XPathReader {
public:
    virtual ~XPathReader() = default;
    // The first node that matches, as text or as its markup; empty when none does or when the
    // reply is not XML. Raises when the reader itself cannot be had or the expression is wrong.
    [[nodiscard]] virtual std::wstring SelectNode(const std::wstring& reply,
                                                  const std::wstring& expression,
                                                  NodeForm form) const = 0;
};

}  // namespace corvane
