#pragma once

// The Windows header with our names kept free of its macros.
#include <windows.h>

#undef GetCommandLine
#undef WriteProfileString
