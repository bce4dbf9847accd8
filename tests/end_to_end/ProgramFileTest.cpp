// What only a look at the program's file shows, and whom it loads when it runs.
#include <algorithm>
#include <sstream>

#include "PeFile.h"
#include "support/windows/BuiltFiles.h"
#include "support/windows/Files.h"
#include "WindowTest.h"

namespace end_to_end {
namespace {

// All that the program may import, of either architecture. Windows 7 is the oldest one that it runs
// on and has every one of these functions; a name goes in here only when Windows 7 has it. And each
// of these DLLs is Windows' own wherever the program stands: they are among those that Windows
// takes from its system folder without looking beside the program (KnownDLLs). None is one that
// only a shown window needs: those would be bound for every call that shows nothing.
const std::map<std::string, const char*> windows7 = {
    {"advapi32.dll",
     R"(RegCloseKey RegCreateKeyExA RegDeleteKeyA RegDeleteValueA RegEnumKeyExW RegOpenKeyExA
         RegOpenKeyExW RegQueryValueExA RegQueryValueExW RegSetValueExA)"},
    {"gdi32.dll",
     R"(CombineRgn CreateFontIndirectW CreateRectRgn CreateRectRgnIndirect DeleteObject
         GetDeviceCaps SelectObject SetBkMode SetTextColor)"},
    {"kernel32.dll",
     R"(AddVectoredExceptionHandler __C_specific_handler CloseHandle CompareStringOrdinal
         CopyFileW CreateDirectoryW CreateEventA CreateEventW CreateFileW CreateMutexW
         CreateProcessW CreateSemaphoreA CreateToolhelp32Snapshot DeleteCriticalSection
         DuplicateHandle EnterCriticalSection FileTimeToSystemTime FindClose FindFirstFileW
         FindNextFileW FormatMessageA FormatMessageW FreeLibrary GetCommandLineW
         GetCurrentProcess GetCurrentProcessId GetCurrentThread GetCurrentThreadId
         GetFileAttributesW GetFileInformationByHandle GetFinalPathNameByHandleW
         GetHandleInformation GetLastError GetLocalTime GetModuleFileNameW GetModuleHandleA
         GetModuleHandleW GetPrivateProfileStringA GetProcAddress GetProcessAffinityMask
         GetStartupInfoW GetSystemDirectoryW GetSystemTimeAsFileTime GetThreadContext
         GetThreadPriority GetTickCount64 GetTimeZoneInformation GlobalLock GlobalSize
         GlobalUnlock InitializeCriticalSection IsDBCSLeadByteEx IsDebuggerPresent
         K32GetMappedFileNameW LeaveCriticalSection LoadLibraryA LoadLibraryExW LoadLibraryW
         LocalFree MulDiv MultiByteToWideChar OpenProcess OutputDebugStringA Process32FirstW
         Process32NextW ProcessIdToSessionId QueryFullProcessImageNameA QueryPerformanceCounter
         QueryPerformanceFrequency RaiseException ReadFile ReleaseMutex ReleaseSemaphore
         RemoveVectoredExceptionHandler ResetEvent ResumeThread RtlCaptureContext
         RtlLookupFunctionEntry RtlUnwindEx RtlVirtualUnwind SetDllDirectoryW SetEvent
         SetLastError SetProcessAffinityMask SetThreadContext SetThreadPriority
         SetThreadStackGuarantee SetUnhandledExceptionFilter Sleep SuspendThread
         SystemTimeToTzSpecificLocalTime TlsAlloc
         TlsGetValue TlsSetValue TryEnterCriticalSection VirtualProtect VirtualQuery
         WaitForMultipleObjects WaitForSingleObject WideCharToMultiByte WriteFile
         WritePrivateProfileStringA)"},
    {"msvcrt.dll",
     R"(abort _amsg_exit atoi _beginthreadex calloc _cexit _close _commode _endthreadex _errno
         _exit exit _fmode fprintf fputc fputs fputwc free fwprintf fwrite _initterm _iob
         __iob_func ___lc_codepage_func localeconv longjmp malloc __mb_cur_max ___mb_cur_max_func
         memchr memcmp memcpy memmove memset _onexit _open __p__commode __p__fmode __p__wcmdln
         printf _read realloc __set_app_type _setjmp _setjmp3 setlocale __setusermatherr signal
         strchr strcmp _strdup strerror strlen strncmp towupper _ultoa vfprintf _wcmdln wcslen
         wcstoul __wgetmainargs __winitenv _write)"},
    {"ole32.dll",
     R"(CoCreateInstance CoDisconnectObject CoInitializeEx
         CoRegisterMessageFilter CoUninitialize
         CoWaitForMultipleHandles StringFromGUID2)"},
    {"oleaut32.dll",
     R"(LoadTypeLibEx SysAllocStringLen SysFreeString SysStringLen SystemTimeToVariantTime
         VarBoolFromStr VarBstrFromDate VarBstrFromR8 VarFormat VarI2FromStr VarI4FromStr
         VarI8FromStr VariantChangeType VariantClear VariantInit VarR8FromStr)"},
    {"shell32.dll", R"(ShellExecuteA SHGetSpecialFolderPathA)"},
    {"user32.dll",
     R"(ClientToScreen CloseClipboard CreateWindowExW DefWindowProcW DestroyWindow
         DispatchMessageW DrawTextW EnableWindow FillRect GetAncestor GetClientRect
         GetClipboardData GetDC GetDlgCtrlID GetFocus GetKeyState GetMessageW GetMonitorInfoW
         GetNextDlgTabItem GetParent GetSysColor GetSysColorBrush GetWindowLongPtrW
         GetWindowLongW GetWindowRect GetWindowTextLengthW GetWindowTextW InvalidateRect IsChild
         IsDialogMessageW IsWindowEnabled IsWindowVisible KillTimer LoadCursorW LoadIconW
         MapWindowPoints MessageBeep MessageBoxW MonitorFromWindow OffsetRect OpenClipboard
         PeekMessageW PostMessageW PostQuitMessage PtInRect RegisterClassExW ReleaseDC
         SendMessageW SetCursor SetFocus SetTimer SetWindowLongPtrW SetWindowLongW SetWindowPos
         SetWindowRgn SetWindowTextW ShowWindow SystemParametersInfoW TranslateMessage
         UpdateWindow)"},
};

// What CorvaneCheck.exe may import besides. The clock of the C++ library brings some that nobody
// calls.
const std::map<std::string, const char*> checkBesides = {
    {"advapi32.dll", "GetTokenInformation OpenProcessToken"},
    {"kernel32.dll",
     R"(DeleteFileW FindResourceW GetConsoleMode GetFileSizeEx GetFullPathNameW GetProcessTimes
         GetStdHandle GetSystemTimeAdjustment GetThreadTimes LoadResource LockResource MoveFileW
         SetFilePointerEx SetSystemTime SizeofResource TerminateProcess WriteConsoleW)"},
    {"msvcrt.dll", "iswalpha wcstol"},
    {"user32.dll",
     "EnumWindows GetClassNameW GetDlgItem GetWindowThreadProcessId SendMessageTimeoutW"},
};

std::set<std::string> Words(const char* text) {
    std::istringstream words(text);
    return {std::istream_iterator<std::string>(words), {}};
}

class ProgramFileTest : public testing::Test {
protected:
    const std::wstring path = BuiltFile("CorvaneTo3CX.exe");
    const PeFile file{path};
};

struct Imports {
    const char* name;
    const char* program;
    std::map<std::string, const char*> besides = {};
};

class ImportsTest : public testing::TestWithParam<Imports> {};

TEST_P(ImportsTest, AreOnlyWhatWindows7HasAndTakesFromItsOwnFolder) {
    const PeFile file{BuiltFile(GetParam().program)};
    const auto imports = file.Imports();
    EXPECT_GT(imports.size(), 5u);
    for (const auto& [library, functions] : imports) {
        const auto known = windows7.find(library);
        ASSERT_NE(known, windows7.end()) << library;
        std::set<std::string> allowed = Words(known->second);
        if (const auto more = GetParam().besides.find(library); more != GetParam().besides.end())
            allowed.merge(Words(more->second));
        for (const std::string& function : functions)
            EXPECT_TRUE(allowed.contains(function)) << library << ": " << function;
    }
    // Nor a DLL that is bound at its first call, by its bare name.
    EXPECT_EQ(file.sizeOf(IMAGE_DIRECTORY_ENTRY_DELAY_IMPORT), 0u);
}

INSTANTIATE_TEST_SUITE_P(Programs, ImportsTest,
                         testing::Values(Imports{"Program", "CorvaneTo3CX.exe"},
                                         Imports{"Check", "CorvaneCheck.exe", checkBesides}),
                         NameOf);

TEST_F(ProgramFileTest, AsksForNoNewerWindows) {
    const IMAGE_OPTIONAL_HEADER& header = file.header();
    const auto version = [](DWORD major, DWORD minor) { return major * 100 + minor; };
    EXPECT_LE(version(header.MajorSubsystemVersion, header.MinorSubsystemVersion), 601u);
    EXPECT_LE(version(header.MajorOperatingSystemVersion, header.MinorOperatingSystemVersion),
              601u);
    EXPECT_EQ(header.Subsystem, IMAGE_SUBSYSTEM_WINDOWS_GUI);
}

// A guarded control flow (GUARD_CF) is not among them: MinGW's compiler does not make its tables.
TEST_F(ProgramFileTest, IsLoadedAnywhereAndRunsNoData) {
    const WORD flags = file.header().DllCharacteristics;
    EXPECT_TRUE(flags & IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE);
    EXPECT_TRUE(flags & IMAGE_DLLCHARACTERISTICS_NX_COMPAT);
    EXPECT_EQ(flags & IMAGE_DLLCHARACTERISTICS_HIGH_ENTROPY_VA,
              sizeof(void*) == 8 ? IMAGE_DLLCHARACTERISTICS_HIGH_ENTROPY_VA : 0);

    // Windows can move only what tells where it has addresses.
    EXPECT_FALSE(file.characteristics() & IMAGE_FILE_RELOCS_STRIPPED);
    EXPECT_GT(file.sizeOf(IMAGE_DIRECTORY_ENTRY_BASERELOC), 0u);

    ASSERT_FALSE(file.sections().empty());
    for (const IMAGE_SECTION_HEADER& section : file.sections()) {
        constexpr DWORD both = IMAGE_SCN_MEM_WRITE | IMAGE_SCN_MEM_EXECUTE;
        EXPECT_NE(section.Characteristics & both, both) << section.Name;
    }
}

class ProgramResourcesTest : public ProgramFileTest {
protected:
    ~ProgramResourcesTest() override { FreeLibrary(module); }

    std::string Resource(const wchar_t* type, int id) const {
        const HRSRC found = FindResourceW(module, MAKEINTRESOURCEW(id), type);
        if (!found)
            return {};
        return {static_cast<const char*>(LockResource(LoadResource(module, found))),
                SizeofResource(module, found)};
    }

    const HMODULE module = LoadLibraryExW(path.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
};

TEST_F(ProgramResourcesTest, ManifestTellsWindowsHowToRunIt) {
    const std::string manifest = Resource(RT_MANIFEST, 1 /* CREATEPROCESS_MANIFEST_RESOURCE_ID */);
    const std::string architecture = sizeof(void*) == 8 ? "amd64" : "x86";
    for (const std::string& part :
         {// As the user who starts it, with no more rights and no asking for them.
          std::string("<requestedExecutionLevel level=\"asInvoker\" uiAccess=\"false\"/>"),
          // Themed controls, of the side-by-side store.
          std::string("<assemblyIdentity type=\"win32\" name=\"Microsoft.Windows.Common-Controls\" "
                      "version=\"6.0.0.0\" processorArchitecture=\"*\" "
                      "publicKeyToken=\"6595b64144ccf1df\" language=\"*\"/>"),
          // Each monitor's resolution, said as Windows 10 and as the ones before it read it.
          std::string(">true/pm</dpiAware>"),
          std::string(">PerMonitorV2, PerMonitor</dpiAwareness>"),
          // Windows 7 and 10: without them Windows shows the program an older one.
          std::string("{35138b9a-5d96-4fbd-8e2d-a2440225f93a}"),
          std::string("{8e0f7a12-bfb3-4fe8-b9a5-48fd50a15a9a}"),
          "name=\"HalvornSystems.CorvaneTo3CX\" version=\"1.0.0.1\" processorArchitecture=\"" +
              architecture + "\""}) {
        EXPECT_NE(manifest.find(part), std::string::npos) << part << "\nis not in\n" << manifest;
    }
}

TEST_F(ProgramResourcesTest, VersionNamesTheProgramItsMakerAndItsVersion) {
    const std::string version = Resource(RT_VERSION, VS_VERSION_INFO);
    const auto fixed = version.find("\xBD\x04\xEF\xFE");
    ASSERT_NE(fixed, std::string::npos);
    VS_FIXEDFILEINFO info{};
    ASSERT_LE(fixed + sizeof info, version.size());
    version.copy(reinterpret_cast<char*>(&info), sizeof info, fixed);
    EXPECT_EQ(info.dwFileVersionMS, 0x0001'0000u);
    EXPECT_EQ(info.dwFileVersionLS, 1u);
    EXPECT_EQ(info.dwProductVersionMS, info.dwFileVersionMS);
    EXPECT_EQ(info.dwProductVersionLS, info.dwFileVersionLS);
    EXPECT_EQ(info.dwFileType, DWORD{VFT_APP});

    const std::wstring text(reinterpret_cast<const wchar_t*>(version.data()),
                            version.size() / sizeof(wchar_t));
    using namespace std::string_literals;
    for (const std::wstring& entry :
         {L"CompanyName\0\0Halvorn Systems\0"s, L"FileDescription\0\0Halvorn Corvane to 3CX\0"s,
          L"FileVersion\0\0001.0.0.1\0"s, L"OriginalFilename\0CorvaneTo3CX.exe\0"s,
          L"ProductVersion\0001.0.0.1\0"s}) {
        EXPECT_NE(text.find(entry), std::wstring::npos) << Utf8(entry);
    }
}

// Somebody put DLLs of the names that Windows' own parts ask for into the program's folder. They
// are no DLLs at all: whoever tried one of them would not come far.
class StrangeLibraryTest : public WindowTest {
protected:
    void SetUp() override {
        WindowTest::SetUp();
        for (const wchar_t* name : names)
            WriteFileText(appFolder + std::wstring(name) + L".dll", "strange");
    }
    void TearDown() override {
        for (const wchar_t* name : names)
            DeleteFileW((appFolder + std::wstring(name) + L".dll").c_str());
        WindowTest::TearDown();
    }

private:
    // Those that Windows' own parts load in the course of a run. What their imports name is found
    // before the program begins; on Windows that is no matter of the program's folder, on Wine it
    // is.
    static constexpr const wchar_t* names[] = {
        L"clbcatq", L"comctl32", L"cryptbase", L"cryptsp", L"dwmapi",  L"libssp-0", L"msimg32",
        L"msxml3",  L"msxml6",   L"oleacc",    L"profapi", L"propsys", L"rpcss",    L"rsaenh",
        L"sxs",     L"usp10",    L"uxtheme",   L"winmm",   L"winspool"};
};

TEST_F(StrangeLibraryTest, IsNotLoadedFromTheProgramsFolder) {
    const std::string call = "/N:S /C:5551234567 /T:I /I:7";
    GoldMine();
    const Outcome run = Run(call);
    EXPECT_EQ(run.boxes, Boxes());
    ASSERT_FALSE(run.log.empty());
    EXPECT_EQ(run.log.back(), "[7]: Finished unloading form and closing program.");
    EXPECT_TRUE(std::count(run.log.begin(), run.log.end(),
                           "[7]: Found (555)123-4567 in a primary contact record."));

    ProgramRun shown = Start("");
    Close(shown, Show(shown));
}

}  // namespace
}  // namespace end_to_end
