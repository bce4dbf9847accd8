#include "check/Table.h"

#include <algorithm>

#include "util/Text.h"

namespace corvane {

namespace {

// Control characters, and those that turn the direction of what follows.
bool Acts(wchar_t character) {
    const auto within = [&](wchar_t first, wchar_t last) {
        return character >= first && character <= last;
    };
    return character < L' ' || within(L'\x7F', L'\x9F') || within(L'\x200E', L'\x200F') ||
           within(L'\x2028', L'\x202E') || within(L'\x2066', L'\x2069') || character == L'\xFEFF';
}

void AppendLine(std::wstring& text, const std::vector<Table::Column>& columns,
                const std::vector<std::size_t>& widths, const Table::Row& cells) {
    std::wstring line;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (i > 0)
            line += L"  ";
        const std::wstring padding(widths[i] - cells[i].size(), L' ');
        line += columns[i].side == Table::Side::Right ? padding + cells[i] : cells[i] + padding;
    }
    text.append(TrimTrailingBlanks(line)).append(L"\n");
}

}  // namespace

std::wstring Printable(std::wstring_view text) {
    std::wstring printable(text);
    std::ranges::replace_if(printable, Acts, L'?');
    return printable;
}

void Table::Add(Row row) {
    row.resize(columns_.size());
    std::ranges::transform(row, row.begin(), &Printable);
    rows_.push_back(std::move(row));
}

std::wstring Table::Text() const {
    Row heads;
    std::vector<std::size_t> widths;
    for (const Column& column : columns_) {
        heads.emplace_back(column.head);
        widths.push_back(column.head.size());
    }
    for (const Row& row : rows_) {
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], row[i].size());
    }
    std::wstring text;
    if (std::ranges::any_of(heads, [](const std::wstring& head) { return !head.empty(); }))
        AppendLine(text, columns_, widths, heads);
    for (const Row& row : rows_)
        AppendLine(text, columns_, widths, row);
    return text;
}

}  // namespace corvane
