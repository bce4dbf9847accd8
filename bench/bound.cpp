// An empty program that binds the DLLs that the program binds at its start: the least that a run of
// it can take.
#include <windows.h>

#include <objbase.h>
#include <oleauto.h>
#include <shlobj.h>

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR, int) {
    // Never so, which the compiler does not know.
    if (GetTickCount() == 0 && GetCurrentProcessId() == 0) {
        RegCloseKey(nullptr);
        DeleteObject(nullptr);
        CoUninitialize();
        SysFreeString(nullptr);
        SHChangeNotify(0, 0, nullptr, nullptr);
        DestroyWindow(nullptr);
    }
    return 0;
}
