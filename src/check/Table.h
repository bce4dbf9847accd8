#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvane {

// The text with a "?" for each character that would act on the screen instead of standing there:
// what is printed comes from strangers too.
[[nodiscard]] std::wstring Printable(std::wstring_view text);

// Rows of texts below each other, as wide as they need to be, with two blanks between columns.
class Table {
public:
    enum class Side { Left, Right };
    struct Column {
        std::wstring_view head;
        Side side = Side::Left;
    };
    using Row = std::vector<std::wstring>;

    // Without any head there is no line of them.
    explicit Table(std::vector<Column> columns) : columns_(std::move(columns)) {}

    // Cells that are missing are empty.
    void Add(Row row);
    [[nodiscard]] bool empty() const { return rows_.empty(); }
    // Each line ends in "\n"; nothing stands behind its last character.
    [[nodiscard]] std::wstring Text() const;

private:
    std::vector<Column> columns_;
    std::vector<Row> rows_;
};

}  // namespace corvane
