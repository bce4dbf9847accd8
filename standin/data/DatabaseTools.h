#pragma once

#include <string>

#include "shared/Options.h"

namespace practice {

// /Dump: writes the history rows to the /Out file, one "field=value" line each with the value
// escaped as in the journal, an empty line between rows.
// /Sql: runs a statement and writes its rows, fields separated by TAB.
// Answers the exit code; on an error the file holds "error: " and the message, and the code is 1.
int RunDatabaseTool(const Options& options);

// The file that holds the data, in the data folder.
std::wstring DatabaseFile(const Options& options);

}  // namespace practice
