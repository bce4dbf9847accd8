#pragma once

#include <string>

#include "shared/Options.h"

namespace practice {

// Writes GM.INI and <user>.INI into the data folder as a first login does; existing ones stay.
void WriteMissingIniFiles(const Options& options);

// The path of <user>.INI in the data folder.
std::wstring PersonalIniFile(const Options& options);

// A value as it stands in the file at this moment; "" when there is none.
std::wstring ReadIniValue(const std::wstring& file, const std::wstring& section,
                          const std::wstring& key);

}  // namespace practice
