#pragma once

#include "seams/XPathReader.h"

namespace corvane::test {

class LibxmlXPathReader final : public XPathReader {
public:
    [[nodiscard]] std::wstring SelectNode(const std::wstring& reply, const std::wstring& expression,
                                          NodeForm form) const override;
};

}  // namespace corvane::test
