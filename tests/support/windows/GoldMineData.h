#pragma once

#include <string>

#include "support/Lines.h"

namespace test_support {

// A data folder of the practice GoldMine, whether one runs on it or not.
class GoldMineData {
public:
    explicit GoldMineData(std::wstring folder);  // ends in a backslash

    const std::wstring& folder() const { return folder_; }
    std::wstring file(const std::wstring& name) const { return folder_ + name; }
    // What has a practice GoldMine work on it, as it stands in a command line.
    std::wstring option() const;

    // What goes wrong from now on.
    void SetFaults(const std::string& lines) const;
    // The journal's entries as they are written, one a line: "> " commands, "< " replies, "! "
    // events, "# " notes.
    Lines Journal() const;
    // What this program writes about a statement: a line for each row, columns separated by tabs.
    std::string Sql(const std::wstring& program, const std::string& statement) const;

private:
    std::wstring folder_;
};

}  // namespace test_support
