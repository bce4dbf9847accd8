#pragma once

#include "platform/kit/Windows.h"

namespace corvane {

// From now on a DLL that is asked for by its name alone comes from Windows' system folder: what
// stands beside the program, in the working folder or on the PATH may be anybody's.
void LoadFromSystemFolderOnly();

// A function of one of Windows' own DLLs; nullptr where this Windows does not have it.
[[nodiscard]] FARPROC FindSystemFunction(const wchar_t* library, const char* function);

template <class Function>
Function SystemFunction(const wchar_t* library, const char* function) {
    return reinterpret_cast<Function>(
        reinterpret_cast<void*>(FindSystemFunction(library, function)));
}

}  // namespace corvane
