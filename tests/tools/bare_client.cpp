// The least that a client of the practice GoldMine can be: connects, listens to its events, sends
// the commands of its command line, and ends. Fails with what COM answered.
//   bare_client.exe <command>... [/Start:<command line>]
// "{area}" in a command stands for what GoldMine answered to the last Open. What is to be started
// is started after them, and not waited for.
#include <windows.h>

#include <oaidl.h>
#include <ocidl.h>
#include <shellapi.h>

#include <cwchar>
#include <initializer_list>
#include <string>

namespace {

constexpr CLSID userInterface = {
    0x5D0C6E13, 0x3F0B, 0x4B0E, {0x9A, 0x53, 0x6C, 0x1B, 0x7F, 0x3E, 0x9A, 0x01}};
constexpr IID userInterfaceId = {
    0x75B14699, 0xB5F4, 0x47F6, {0x98, 0xDC, 0x2E, 0x7B, 0x98, 0xF7, 0xE4, 0x6D}};
constexpr IID eventsId = {
    0x5D0C6E12, 0x3F0B, 0x4B0E, {0x9A, 0x53, 0x6C, 0x1B, 0x7F, 0x3E, 0x9A, 0x01}};
constexpr DISPID executeCommand = 1;

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"  // of the interfaces

// Hears the events and does nothing. Lives as long as the program.
class Sink final : public IDispatch {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        const bool known = id == IID_IUnknown || id == IID_IDispatch || id == eventsId;
        *object = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                     UINT*) override {
        return S_OK;
    }
};

#pragma GCC diagnostic pop

// What stands between the tags of a reply's status.
std::wstring StatusOf(const VARIANT& reply) {
    const std::wstring text = reply.vt == VT_BSTR && reply.bstrVal ? reply.bstrVal : L"";
    const size_t status = text.find(L"<status");
    const size_t first = text.find(L'>', status);
    const size_t last = text.find(L'<', first);
    return status < first && first < last ? text.substr(first + 1, last - first - 1) : L"";
}

HRESULT Send(IDispatch& goldMine, std::wstring command) {
    static std::wstring area;
    static const std::wstring areaPlace = L"{area}";
    if (const size_t place = command.find(areaPlace); place != std::wstring::npos)
        command.replace(place, areaPlace.size(), area);

    VARIANT argument{};
    argument.vt = VT_BSTR;
    argument.bstrVal = SysAllocString(command.c_str());
    DISPPARAMS parameters{&argument, nullptr, 1, 0};
    VARIANT reply{};
    const HRESULT result = goldMine.Invoke(executeCommand, IID_NULL, LOCALE_USER_DEFAULT,
                                           DISPATCH_METHOD, &parameters, &reply, nullptr, nullptr);
    if (command.starts_with(L"<GMAPI call=\"Open\""))
        area = StatusOf(reply);
    VariantClear(&argument);
    VariantClear(&reply);
    return result;
}

HRESULT Start(wchar_t* commandLine) {
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(nullptr, commandLine, nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr,
                        nullptr, &startup, &process)) {
        return HRESULT_FROM_WIN32(GetLastError());
    }
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return S_OK;
}

// A command, or what is to be started.
HRESULT Do(IDispatch& goldMine, wchar_t* argument) {
    constexpr wchar_t start[] = L"/Start:";
    constexpr size_t length = ARRAYSIZE(start) - 1;
    return wcsncmp(argument, start, length) == 0 ? Start(argument + length)
                                                 : Send(goldMine, argument);
}

HRESULT Run(int count, wchar_t** commands) {
    static Sink sink;
    IDispatch* goldMine = nullptr;
    HRESULT result = CoCreateInstance(userInterface, nullptr, CLSCTX_LOCAL_SERVER, userInterfaceId,
                                      reinterpret_cast<void**>(&goldMine));
    IConnectionPointContainer* container = nullptr;
    if (SUCCEEDED(result)) {
        result = goldMine->QueryInterface(IID_IConnectionPointContainer,
                                          reinterpret_cast<void**>(&container));
    }
    IConnectionPoint* events = nullptr;
    if (SUCCEEDED(result))
        result = container->FindConnectionPoint(eventsId, &events);
    DWORD cookie = 0;
    if (SUCCEEDED(result))
        result = events->Advise(&sink, &cookie);
    for (int command = 0; command < count && SUCCEEDED(result); ++command)
        result = Do(*goldMine, commands[command]);
    if (cookie != 0)
        events->Unadvise(cookie);
    for (IUnknown* object : {static_cast<IUnknown*>(events), static_cast<IUnknown*>(container),
                             static_cast<IUnknown*>(goldMine)}) {
        if (object)
            object->Release();
    }
    return result;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR, int) {
    if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)))
        return 1;
    int count = 0;
    wchar_t** arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    const HRESULT result = Run(count - 1, arguments + 1);
    CoUninitialize();
    return static_cast<int>(result);
}
