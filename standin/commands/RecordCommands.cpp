#include "commands/RecordCommands.h"

#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

#include "shared/Text.h"

namespace practice {
namespace {

constexpr std::wstring_view tables[] = {L"Contact1", L"ContSupp", L"ContHist"};
constexpr const wchar_t* noArea = L"There is no such area.";
constexpr const wchar_t* noRecord = L"The area stands on no record.";

// The record found by the query, where 1, 2, 3 or 4 says how the cursor came to it.
Answer Stand(Area& area, const Command& command, const std::optional<std::wstring>& recordId,
             const wchar_t* found, const wchar_t* notFound) {
    if (!recordId)
        return Success(command, notFound);
    area.recordId = *recordId;
    return Success(command, found);
}

Answer GoTo(CallContext& context, const Command& command, Area& area) {
    const std::wstring& wanted = command.Argument(L"Parameter");
    const std::wstring from = L"select RecID from " + area.table;
    if (const auto exact = context.database.Value(from + L" where RecID = ?", {wanted}))
        return Stand(area, command, exact, L"1", L"3");
    return Stand(area, command,
                 context.database.Value(from + L" where RecID > ? order by RecID", {wanted}), L"2",
                 L"3");
}

Answer Skip(CallContext& context, const Command& command, Area& area) {
    const std::wstring& parameter = command.Argument(L"Parameter");
    const long steps = parameter.empty() ? 1 : ToNumber(parameter, 0);
    if (steps == 0)
        return Failure(command, L"SKIP needs a number of records.");
    if (area.recordId.empty())
        return Failure(command, noRecord);
    const std::wstring beyond = steps > 0 ? L" > " : L" < ";
    const std::wstring sql = L"select RecID from " + area.table + L" where rowid" + beyond +
                             L"(select rowid from " + area.table +
                             L" where RecID = ?) order by rowid" + (steps > 0 ? L"" : L" desc") +
                             L" limit 1 offset " + std::to_wstring(std::labs(steps) - 1);
    return Stand(area, command, context.database.Value(sql, {area.recordId}), L"1",
                 steps > 0 ? L"3" : L"4");
}

std::optional<Column> FindColumn(CallContext& context, const Area& area, std::wstring_view field) {
    for (Column& column : context.database.Columns(area.table)) {
        if (EqualsIgnoringCase(column.name, field))
            return std::move(column);
    }
    return std::nullopt;
}

}  // namespace

Answer RunOpen(CallContext& context, const Command& command) {
    for (const std::wstring_view table : tables) {
        if (EqualsIgnoringCase(command.Argument(L"Filename"), table))
            return Success(command, context.areas.OpenTable(std::wstring(table)));
    }
    return Failure(command, L"There is no such table.");
}

Answer RunMove(CallContext& context, const Command& command) {
    Area* area = context.areas.FindTable(command.Argument(L"Area"));
    if (!area)
        return Failure(command, noArea);
    const std::wstring& step = command.Argument(L"Command");
    const std::wstring inOrder = L"select RecID from " + area->table + L" order by rowid";
    if (EqualsIgnoringCase(step, L"GOTO"))
        return GoTo(context, command, *area);
    if (EqualsIgnoringCase(step, L"TOP"))
        return Stand(*area, command, context.database.Value(inOrder), L"1", L"3");
    if (EqualsIgnoringCase(step, L"BOTTOM"))
        return Stand(*area, command, context.database.Value(inOrder + L" desc"), L"1", L"3");
    if (EqualsIgnoringCase(step, L"SKIP"))
        return Skip(context, command, *area);
    return Failure(command, L"Unknown move.");
}

Answer RunRead(CallContext& context, const Command& command) {
    Area* area = context.areas.FindTable(command.Argument(L"Area"));
    if (!area)
        return Failure(command, noArea);
    if (area->recordId.empty())
        return Failure(command, noRecord);
    const std::optional<Column> column = FindColumn(context, *area, command.Argument(L"Field"));
    if (!column)
        return Failure(command, L"There is no such field.");
    return Success(command, context.database
                                .Value(L"select " + column->name + L" from " + area->table +
                                           L" where RecID = ?",
                                       {area->recordId})
                                .value_or(L""));
}

Answer RunReplace(CallContext& context, const Command& command) {
    Area* area = context.areas.FindTable(command.Argument(L"Area"));
    if (!area)
        return Failure(command, noArea);
    if (area->recordId.empty())
        return Failure(command, noRecord);
    const std::optional<Column> column = FindColumn(context, *area, command.Argument(L"Field"));
    if (!column || column->name == L"RecID")
        return Failure(command, L"There is no such field that can be replaced.");
    std::wstring text = command.Argument(L"NewValue");
    if (command.Argument(L"Append") == L"1") {
        text.insert(
            0, context.database
                   .Value(L"select " + column->name + L" from " + area->table + L" where RecID = ?",
                          {area->recordId})
                   .value_or(L""));
    }
    context.database.SetField(area->table, *column, area->recordId, text);
    context.desk.RefreshContacts();
    return Success(command, L"1");
}

Answer RunUnlock(CallContext& context, const Command& command) {
    return context.areas.FindTable(command.Argument(L"Area")) ? Success(command, L"1")
                                                              : Failure(command, noArea);
}

Answer RunClose(CallContext& context, const Command& command) {
    const std::wstring& handle = command.Argument(L"Area");
    if (!context.areas.FindTable(handle))
        return Failure(command, noArea);
    context.areas.Close(handle);
    return Success(command, L"1");
}

Answer RunInsHist(CallContext& context, const Command& command) {
    const std::wstring& account = command.Argument(L"AccNo");
    if (!context.database.Value(L"select AccountNo from Contact1 where AccountNo = ?", {account}))
        return Success(command, L"0");
    Database::History history;
    history.account = account;
    history.recordType = command.Argument(L"RecType");
    history.reference = command.Argument(L"Ref");
    history.notes = command.Argument(L"Notes");
    history.user = command.Argument(L"User");
    history.activity = command.Argument(L"Activity");
    history.duration = command.Argument(L"Duration");
    history.resultCode = command.Argument(L"ResultCode");
    history.isPrivate = command.Argument(L"Private");
    history.operatorRecordId = command.Argument(L"OpRecID");
    const std::wstring recordId = context.database.InsertHistory(history, context.plan.numericIds);
    context.desk.SetCurrentHistory(recordId);
    context.desk.RefreshContacts();
    return Success(command, recordId);
}

Answer RunRecordObj(CallContext& context, const Command& command) {
    const std::wstring& step = command.Argument(L"Command");
    const std::wstring& argument = command.Argument(L"Argument");
    Client& client = context.client;
    if (step == L"SetObject") {
        client.recordObjectSet = true;
        client.recordOrderSet = false;
        return Success(command, L"Success");
    }
    if (!client.recordObjectSet)
        return Failure(command, L"SetObject comes first.");
    if (step == L"SetRecord") {
        return argument == L"Primary" ? Success(command, L"Success")
                                      : Failure(command, L"Unknown record.");
    }
    if (step == L"SetOrder") {
        client.recordOrderSet = argument == L"ContAcc";
        return client.recordOrderSet ? Success(command, L"Success")
                                     : Failure(command, L"Unknown order.");
    }
    if (step == L"Seek") {
        if (!client.recordOrderSet)
            return Failure(command, L"SetOrder comes first.");
        if (!context.database.Value(L"select AccountNo from Contact1 where AccountNo = ?",
                                    {argument})) {
            return Failure(command, L"There is no such account.");
        }
        context.desk.ShowInCurrentWindow(argument);
        return Success(command, L"Success");
    }
    return Failure(command, L"Unknown record object command.");
}

}  // namespace practice
