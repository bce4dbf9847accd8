#include "commands/MacroCommand.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "shared/Text.h"

namespace practice {
namespace {

std::optional<std::wstring> Field(CallContext& context, std::wstring_view table,
                                  std::wstring_view field, std::wstring_view key,
                                  const std::wstring& keyValue) {
    const std::vector<Column> columns = context.database.Columns(table);
    const auto column = std::find_if(columns.begin(), columns.end(), [&](const Column& candidate) {
        return EqualsIgnoringCase(candidate.name, field);
    });
    if (column == columns.end())
        return std::nullopt;
    return context.database.Value(L"select " + column->name + L" from " + std::wstring(table) +
                                      L" where " + std::wstring(key) + L" = ?",
                                  {keyValue});
}

Answer ContactField(CallContext& context, const Command& command, std::wstring_view field) {
    const std::optional<std::wstring> account = context.desk.CurrentAccount();
    if (!account)
        return Failure(command, L"No contact record is open.");
    const auto value = Field(context, L"Contact1", field, L"AccountNo", *account);
    return value ? Success(command, *value) : Failure(command, L"There is no such field.");
}

Answer HistoryField(CallContext& context, const Command& command, std::wstring_view field) {
    const std::wstring& recordId = context.desk.CurrentHistory();
    if (recordId.empty())
        return Failure(command, L"No history record is open.");
    const auto value = Field(context, L"ContHist", field, L"RecID", recordId);
    return value ? Success(command, *value) : Failure(command, L"There is no such field.");
}

Answer SystemInformation(CallContext& context, const Command& command) {
    const Options& options = context.options;
    const std::wstring program =
        DataValue(L"Version", options.version) + DataValue(L"ProgramPath", ProgramPath());
    const std::wstring database =
        DataValue(L"Type", L"SQLite") +
        DataValue(L"Contacts",
                  context.database.Value(L"select count(*) from Contact1").value_or(L"0"));
    const std::wstring session = DataValue(L"UserName", options.user) +
                                 DataValue(L"ProgramDataDir", options.dataFolder) +
                                 DataValue(L"SysDir", options.dataFolder);
    return Success(command, L"System Information",
                   DataElement(L"System Information", DataElement(L"Program", program) +
                                                          DataElement(L"Database", database) +
                                                          DataElement(L"Session", session)));
}

}  // namespace

Answer RunMacro(CallContext& context, const Command& command) {
    const std::wstring& macro = command.Argument(L"Macro");
    const auto is = [&](std::wstring_view name) { return EqualsIgnoringCase(macro, name); };
    if (is(L"&Version"))
        return Success(command, context.options.version);
    if (is(L"&UserName"))
        return Success(command, context.options.user);
    if (is(L"&ProgramDataDir") || is(L"&SysDir"))
        return Success(command, context.options.dataFolder);
    if (is(L"&SysInfo"))
        return SystemInformation(context, command);
    if (is(L"&Phone1") || is(L"&Phone2") || is(L"&Phone3"))
        return ContactField(context, command, std::wstring_view(macro).substr(1));
    constexpr std::wstring_view contact = L"Contact1->";
    constexpr std::wstring_view history = L"ContHist->";
    if (StartsWithIgnoringCase(macro, contact))
        return ContactField(context, command, std::wstring_view(macro).substr(contact.size()));
    if (StartsWithIgnoringCase(macro, history))
        return HistoryField(context, command, std::wstring_view(macro).substr(history.size()));
    return Failure(command, L"Unknown macro.");
}

}  // namespace practice
