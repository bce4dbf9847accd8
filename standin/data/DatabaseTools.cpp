#include "data/DatabaseTools.h"

#include "data/Database.h"
#include "shared/Files.h"
#include "shared/Text.h"

namespace practice {
namespace {

std::wstring DumpText(const Table& table) {
    std::wstring text;
    for (const Row& row : table.rows) {
        text += text.empty() ? L"" : L"\n";
        for (std::size_t i = 0; i < row.size(); ++i)
            text += table.columns[i] + L"=" + EscapeLine(row[i]) + L"\n";
    }
    return text;
}

std::wstring TabbedText(const Table& table) {
    std::wstring text;
    for (const Row& row : table.rows) {
        for (std::size_t i = 0; i < row.size(); ++i)
            text += (i == 0 ? L"" : L"\t") + EscapeLine(row[i]);
        text += L"\n";
    }
    return text;
}

}  // namespace

std::wstring DatabaseFile(const Options& options) {
    return options.dataFolder + L"gmw.sqlite";
}

int RunDatabaseTool(const Options& options) {
    std::wstring text;
    bool done = true;
    try {
        Database database(DatabaseFile(options), false);
        text = options.dump ? DumpText(database.Run(L"select * from ContHist order by rowid"))
                            : TabbedText(database.Run(options.sql));
    } catch (const DatabaseError& error) {
        text = L"error: " + error.Message() + L"\n";
        done = false;
    }
    return WriteWholeFile(options.outFile, ToUtf8(text)) && done ? 0 : 1;
}

}  // namespace practice
