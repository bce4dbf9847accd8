#include "support/windows/GoldMineData.h"

#include <gtest/gtest.h>

#include <utility>

#include "support/windows/Encoding.h"
#include "support/windows/Files.h"
#include "support/windows/Process.h"

namespace test_support {

GoldMineData::GoldMineData(std::wstring folder) : folder_(std::move(folder)) {}

std::wstring GoldMineData::option() const {
    // The backslash before the closing quote is one of two.
    return L"/Data:\"" + folder_ + L"\\\"";
}

void GoldMineData::SetFaults(const std::string& lines) const {
    WriteFileText(file(L"faults.txt"), lines);
}

Lines GoldMineData::Journal() const {
    return SplitLines(ReadFileText(file(L"journal.txt")).value_or(""), "\n");
}

std::string GoldMineData::Sql(const std::wstring& program, const std::string& statement) const {
    const std::wstring out = file(L"rows.txt");
    const DWORD exitCode =
        RunToEnd(program, option() + L" \"/Sql:" + Wide(statement) + L"\" /Out:\"" + out + L"\"");
    const std::string written = ReadFileText(out).value_or("");
    EXPECT_EQ(exitCode, 0u) << statement << '\n' << written;
    return written;
}

}  // namespace test_support
