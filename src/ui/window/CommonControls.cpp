#include "ui/window/CommonControls.h"

#include "platform/kit/ComError.h"
#include "platform/kit/SystemLibraries.h"

namespace corvane {

namespace {

template <class Function>
void Bind(Function& function, HMODULE library, const char* name) {
    function = FunctionOf<Function>(library, name);
    if (!function)
        ThrowIfFailed(HRESULT_FROM_WIN32(GetLastError()));
}

CommonControls Bound() {
    // By its name alone: the manifest says which version that is.
    const HMODULE library = LoadLibraryW(L"comctl32.dll");
    if (!library)
        ThrowIfFailed(HRESULT_FROM_WIN32(GetLastError()));
    LoadWhatControlsBind();
    CommonControls controls{};
    Bind(controls.InitCommonControlsEx, library, "InitCommonControlsEx");
    Bind(controls.SetWindowSubclass, library, "SetWindowSubclass");
    Bind(controls.RemoveWindowSubclass, library, "RemoveWindowSubclass");
    Bind(controls.DefSubclassProc, library, "DefSubclassProc");
    return controls;
}

}  // namespace

const CommonControls& TheCommonControls() {
    static const CommonControls controls = Bound();
    return controls;
}

}  // namespace corvane
