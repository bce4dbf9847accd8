#pragma once

#include "seams/XPathReader.h"

namespace corvane::test {

class LibxmlXPathReader final : public XPathReader {
public:
    [[nodiscard]] std::optional<std::wstring> SelectNode(const std::wstring& reply,
                                                         const std::wstring& expression,
                                                         NodeForm form,
                                                         WhiteSpace space) const override;
};

}  // namespace corvane::test
