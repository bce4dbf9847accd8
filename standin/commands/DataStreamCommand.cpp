#include "commands/DataStreamCommand.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "shared/Text.h"

namespace practice {
namespace {

Answer Query(CallContext& context, const Command& command) {
    if (!command.Argument(L"Filter").empty())
        return Failure(command, L"Filters are not supported.");
    Table result = context.database.Query(command.Argument(L"SQL"));
    if (result.rows.empty())
        return Success(command, L"0");
    return Success(command, context.areas.OpenQuery(std::move(result)));
}

std::wstring Packet(Area& area, std::size_t wanted, const std::wstring& fieldDelimiter,
                    const std::wstring& rowDelimiter) {
    const std::vector<Row>& rows = area.result.rows;
    const std::size_t end = std::min(rows.size(), area.fetched + wanted);
    std::wstring count = std::to_wstring(rows.size());
    count.insert(0, 4 - std::min<std::size_t>(count.size(), 4), L'0');
    std::wstring packet = (end == rows.size() ? L"3000-" : L"0000-") + count;
    for (; area.fetched < end; ++area.fetched) {
        packet += rowDelimiter;
        const Row& row = rows[area.fetched];
        for (std::size_t field = 0; field < row.size(); ++field)
            packet += (field == 0 ? L"" : fieldDelimiter) + row[field];
    }
    return packet;
}

Answer Fetch(CallContext& context, const Command& command) {
    Area* area = context.areas.FindQuery(command.Argument(L"Area"));
    if (!area)
        return Failure(command, L"There is no such area.");
    const long wanted = ToNumber(command.Argument(L"FetchCount"), 0);
    if (wanted < 1)
        return Failure(command, L"FetchCount must be at least 1.");
    if (command.Argument(L"Raw") != L"1")
        return Failure(command, L"Only raw packets are supported.");
    const auto orDefault = [&](std::wstring_view name, const wchar_t* fallback) {
        const std::wstring& text = command.Argument(name);
        return text.empty() ? std::wstring(fallback) : text;
    };
    const std::wstring packet =
        Packet(*area, static_cast<std::size_t>(wanted), orDefault(L"FieldDelimiter", L"\r"),
               orDefault(L"RowDelimiter", L"\n"));
    return Success(command, L"Success",
                   DataElement(L"Return", DataElement(L"Rows", DataValue(L"RawReturn", packet))));
}

Answer Close(CallContext& context, const Command& command) {
    const std::wstring& handle = command.Argument(L"Area");
    if (!context.areas.FindQuery(handle))
        return Failure(command, L"There is no such area.");
    context.areas.Close(handle);
    return Success(command, L"1");
}

}  // namespace

Answer RunDataStream(CallContext& context, const Command& command) {
    const std::wstring& step = command.Argument(L"Command");
    if (step == L"Query")
        return Query(context, command);
    if (step == L"Fetch")
        return Fetch(context, command);
    if (step == L"Close")
        return Close(context, command);
    return Failure(command, L"Unknown data stream command.");
}

}  // namespace practice
