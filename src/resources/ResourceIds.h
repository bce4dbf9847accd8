#pragma once

// Macros, because the resource compiler knows no constants.
#define IDI_APPLICATION_ICON 1
