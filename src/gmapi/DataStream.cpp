#include "gmapi/DataStream.h"

#include "gmapi/Envelope.h"
#include "gmapi/GMUI.h"
#include "seams/Conversions.h"
#include "seams/MessageBoxes.h"
#include "seams/StatusWriter.h"
#include "ui/form/Form.h"
#include "util/Text.h"

namespace corvane {

namespace {

constexpr std::wstring_view call = L"DataStream";

std::wstring FailureText(std::wstring_view what, std::wstring_view reply) {
    return Join(L"Error calling DataStream ", what, L" function. Result:", lineBreak, reply);
}

}  // namespace

RawRows ParseRawReturn(std::wstring_view rawReturn) {
    const auto lines = Split(rawReturn, L'\n');
    RawRows rows;
    if (!lines.empty())
        rows.header = lines[0];
    if (rows.header.ends_with(L'\r'))
        rows.header.pop_back();
    const auto dash = rows.header.find(L'-');
    rows.rowCount =
        LongFromText(dash == std::wstring::npos ? rows.header : rows.header.substr(dash + 1));
    if (lines.size() > 1)
        rows.firstRow = lines[1];
    return rows;
}

DataStream::DataStream(GMUI& gmui, Form& form, StatusWriter& status, MessageBoxes& boxes)
    : gmui_(gmui), form_(form), status_(status), boxes_(boxes) {}

std::optional<RawRows> DataStream::RunQuery(std::wstring_view sql) {
    std::wstring reply;
    {
        const WaitPointer whileGoldMineSearches(form_);
        reply = gmui_.GMUI_Execute(
            Command(call).Data(L"Command", L"Query").Data(L"SQL", sql).Data(L"Filter", L"").Text());
    }
    if (!Succeeded(reply, call)) {
        ReportFailure(Join(L"Error calling DataStream Query function for this SQL query:",
                           lineBreak, sql, lineBreak, L"Result:", lineBreak, reply));
        return std::nullopt;
    }
    const std::wstring area = gmui_.StatusValue(reply);
    if (area == L"0")
        return std::nullopt;

    reply = gmui_.GMUI_Execute(Command(call)
                                   .Data(L"Command", L"Fetch")
                                   .Data(L"Area", area)
                                   .Data(L"FetchCount", L"1")
                                   .Data(L"Raw", L"1")
                                   .Data(L"FieldDelimiter", L"")
                                   .Data(L"RowDelimiter", L"")
                                   .Text());
    if (!Succeeded(reply, call)) {
        ReportFailure(FailureText(L"Fetch", reply));
        return std::nullopt;
    }
    const std::wstring rawReturn = Unescape(gmui_.SelectNode(
        reply,
        L"/GMAPI[@call=\"DataStream\"]/data[@name=\"Return\"]/data[@name=\"Rows\"]/"
        L"data[@name=\"RawReturn\"]"));

    reply = gmui_.GMUI_Execute(Command(call).Data(L"Command", L"Close").Data(L"Area", area).Text());
    // The row that was fetched still counts.
    if (!Succeeded(reply, call))
        ReportFailure(FailureText(L"Close", reply));

    return ParseRawReturn(rawReturn);
}

std::optional<std::wstring> DataStream::FirstFieldOfQuery(std::wstring_view sql) {
    const auto rows = RunQuery(sql);
    // More than one match is as good as none: nobody can tell which is meant.
    if (!rows || rows->rowCount != 1)
        return std::nullopt;
    const auto fields = Split(rows->firstRow, L'\r');
    if (fields.empty()) {
        ReportFailure(
            Join(L"There is no field number 1 delimited by a Carriage Return in the following "
                 L"record:",
                 lineBreak, rows->firstRow));
        return std::nullopt;
    }
    return fields[0];
}

void DataStream::ReportFailure(std::wstring_view text) {
    boxes_.Notify(text, BoxIcon::Exclamation);
    status_.WriteStatus(text);
}

}  // namespace corvane
