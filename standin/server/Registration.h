#pragma once

#include <windows.h>

namespace practice {

// Writes what COM needs to start this program, for this user. Refuses where the interface belongs
// to a real GoldMine: its clients would find this one.
HRESULT RegisterServer();
// Removes all of it, and nothing else.
HRESULT UnregisterServer();

}  // namespace practice
