#pragma once

#include "Options.h"

namespace practice {

// Writes GM.INI and <user>.INI into the data folder as a first login does; existing ones stay.
void WriteMissingIniFiles(const Options& options);

}  // namespace practice
