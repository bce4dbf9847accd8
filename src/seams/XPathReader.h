#pragma once

#include <optional>
#include <string>

namespace corvane {

enum class NodeForm { Text, Xml };

// What becomes of blanks and line breaks: what the reader does with them by itself, which trims the
// ends of a text, or nothing.
enum class WhiteSpace { ReadersOwn, Kept };

// Reads one node out of an XML reply; MsxmlXPathReader is the real one.
class XPathReader {
public:
    virtual ~XPathReader() = default;
    // The first node that matches, as text or as its markup; empty when none does, nothing when the
    // reply is not XML. Raises when the reader itself cannot be had or the expression is wrong.
    [[nodiscard]] virtual std::optional<std::wstring> SelectNode(const std::wstring& reply,
                                                                 const std::wstring& expression,
                                                                 NodeForm form,
                                                                 WhiteSpace space) const = 0;
};

}  // namespace corvane
