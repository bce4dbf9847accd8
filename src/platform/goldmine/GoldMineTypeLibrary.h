#pragma once

#include "platform/kit/Windows.h"

#include <oaidl.h>

namespace corvane {

// The interface of GoldMine's user-interface automation object: the one identifier of GoldMine's
// that the program knows. Everything else is read from GoldMine's type library, so that any
// GoldMine version works.
inline constexpr IID goldMineInterface = {
    0x75B14699, 0xB5F4, 0x47F6, {0x98, 0xDC, 0x2E, 0x7B, 0x98, 0xF7, 0xE4, 0x6D}};

struct GoldMineIdentifiers {
    CLSID automationClass{};
    DISPID commandMethod = DISPID_UNKNOWN;  // takes the command text, returns the reply text
    IID eventInterface{};                   // IID_NULL when the class raises no events
    DISPID windowUpDown = DISPID_UNKNOWN;   // window name, up flag, window handle
};

// Reads the type library that is registered for the interface, if a file with a library stands
// where it is registered: nothing else that a registration may name is asked. Raises error 429 when
// GoldMine's automation is not registered.
[[nodiscard]] GoldMineIdentifiers ReadGoldMineTypeLibrary();

// Reads the library that was found so.
[[nodiscard]] GoldMineIdentifiers ReadGoldMineTypeLibrary(ITypeLib& library);

}  // namespace corvane
