#pragma once

#include <string>

#include "seams/XPathReader.h"
#include "util/Text.h"

namespace corvane {

// Reads the commands that are meant for GoldMine.
class CommandReader {
public:
    explicit CommandReader(const XPathReader& xpath) : xpath_(xpath) {}

    [[nodiscard]] std::wstring Call(const std::wstring& command) const {
        return Node(command, L"/GMAPI/@call");
    }
    // One of its arguments; empty when it has none of that name.
    [[nodiscard]] std::wstring Data(const std::wstring& command, std::wstring_view name) const {
        return Node(command, Join(L"/GMAPI/data[@name=\"", name, L"\"]"));
    }

private:
    [[nodiscard]] std::wstring Node(const std::wstring& command,
                                    const std::wstring& expression) const {
        return xpath_.SelectNode(command, expression, NodeForm::Text, WhiteSpace::ReadersOwn)
            .value_or(std::wstring());
    }

    const XPathReader& xpath_;
};

}  // namespace corvane
