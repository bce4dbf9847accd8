#pragma once

#include <optional>
#include <string>

#include "seams/XPathReader.h"

namespace corvane {

// MSXML's DOM with XPath. A fresh document per call: replies are read once.
class MsxmlXPathReader final : public XPathReader {
public:
    [[nodiscard]] std::optional<std::wstring> SelectNode(const std::wstring& reply,
                                                         const std::wstring& expression,
                                                         NodeForm form,
                                                         WhiteSpace space) const override;
};

}  // namespace corvane
