#pragma once

#include "platform/kit/Windows.h"

namespace corvane {

// From now on a DLL that is asked for by its name alone comes from Windows' system folder: what
// stands beside the program, in the working folder or on the PATH may be anybody's.
void LoadFromSystemFolderOnly();

// One of Windows' own DLLs, for the rest of the run: whoever asks for it by its name later gets
// this one. nullptr where this Windows does not have it.
HMODULE LoadFromSystemFolder(const wchar_t* library);

// To be called before anything is shown: the common controls, which message boxes use too, bind
// these at their first need, from wherever they are found.
void LoadWhatControlsBind();

// nullptr where the library, which may be none, does not have it.
template <class Function>
[[nodiscard]] Function FunctionOf(HMODULE library, const char* function) {
    return library ? reinterpret_cast<Function>(
                         reinterpret_cast<void*>(GetProcAddress(library, function)))
                   : nullptr;
}

// A function of one of Windows' own DLLs; nullptr where this Windows does not have it.
template <class Function>
[[nodiscard]] Function SystemFunction(const wchar_t* library, const char* function) {
    return FunctionOf<Function>(LoadFromSystemFolder(library), function);
}

}  // namespace corvane
