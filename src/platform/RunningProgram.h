#pragma once

#include <string>

#include "util/ProgramInfo.h"

namespace corvane {

// Folder and name of the running executable.
[[nodiscard]] ProgramInfo RunningProgramInfo(int majorVersion, int minorVersion, int revision);

// The text of the command line behind the program's own path.
[[nodiscard]] std::wstring RawCommandLine();

}  // namespace corvane
