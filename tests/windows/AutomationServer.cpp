#include "windows/AutomationServer.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>

#include "platform/goldmine/GoldMineTypeLibrary.h"
#include "platform/kit/Bstr.h"
#include "platform/kit/ComObject.h"
#include "support/windows/BuiltFiles.h"
#include "support/windows/Waiting.h"
#include "windows/InterfaceKeeper.h"

#include <olectl.h>

namespace corvane::test {

namespace {

using Microsoft::WRL::ComPtr;
using test_support::PumpUntil;
using test_support::WaitUntil;

constexpr UINT runTask = WM_APP + 1;  // wParam: a std::function<void()> that the thread deletes

const std::wstring libraryId = L"{B7C1F0A0-5E1D-4B7A-8C55-0A1D6E2F4001}";
// OLE Automation's marshallers: of dual interfaces and of dispatch interfaces.
const std::wstring dualMarshaller = L"{00020424-0000-0000-C000-000000000046}";
const std::wstring dispatchMarshaller = L"{00020420-0000-0000-C000-000000000046}";

std::optional<std::wstring> ClassesText(const std::wstring& key, const std::wstring& value) {
    std::array<wchar_t, 600> text{};
    DWORD bytes = sizeof(text);
    if (RegGetValueW(HKEY_CLASSES_ROOT, key.c_str(), value.c_str(), RRF_RT_REG_SZ, nullptr,
                     text.data(), &bytes) != ERROR_SUCCESS) {
        return std::nullopt;
    }
    return text.data();
}

void SetClassesText(const std::wstring& key, const std::wstring& value, const std::wstring& text) {
    EXPECT_EQ(RegSetKeyValueW(HKEY_CLASSES_ROOT, key.c_str(), value.c_str(), REG_SZ, text.c_str(),
                              static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t))),
              ERROR_SUCCESS);
}

}  // namespace

LibraryRegistration::LibraryRegistration(LibraryFlavour flavour, const RegisteredAs& as)
    : libraryKey_(as.view + L"TypeLib\\" + libraryId),
      interfaceKey_(as.view + L"Interface\\{75B14699-B5F4-47F6-98DC-2E7B98F7E46D}"),
      eventsKey_(as.view + L"Interface\\{B7C1F0A4-5E1D-4B7A-8C55-0A1D6E2F4001}") {
    Add(flavour, as.version, as.language);
    Set(interfaceKey_ + L"\\TypeLib", L"", libraryId);
    if (as.statedVersion)
        Set(interfaceKey_ + L"\\TypeLib", L"Version", *as.statedVersion);
    else
        Remove(interfaceKey_ + L"\\TypeLib", L"Version");
    if (as.withProxy)
        Set(interfaceKey_ + L"\\ProxyStubClsid32", L"",
            flavour == LibraryFlavour::DispatchOnly ? dispatchMarshaller : dualMarshaller);
    else
        Remove(interfaceKey_ + L"\\ProxyStubClsid32", L"");
    Set(eventsKey_ + L"\\ProxyStubClsid32", L"", dispatchMarshaller);
}

LibraryRegistration::~LibraryRegistration() {
    RegDeleteTreeW(HKEY_CLASSES_ROOT, libraryKey_.c_str());
    RegDeleteTreeW(HKEY_CLASSES_ROOT, eventsKey_.c_str());
    bool stoodBefore = false;
    for (const Before& each : before_)
        stoodBefore = stoodBefore || (each.key.starts_with(interfaceKey_) && each.text);
    if (!stoodBefore)
        RegDeleteTreeW(HKEY_CLASSES_ROOT, interfaceKey_.c_str());
    for (const Before& each : before_) {
        if (each.key.starts_with(interfaceKey_) && each.text)
            SetClassesText(each.key, each.value, *each.text);
    }
}

void LibraryRegistration::Add(std::optional<LibraryFlavour> flavour, const std::wstring& version,
                              const std::wstring& language) {
    const std::wstring number = flavour ? std::to_wstring(static_cast<int>(*flavour)) : L"none";
    AddPath(test_support::OwnProgram() + L"\\" + number, version, language);
}

void LibraryRegistration::AddPath(const std::wstring& path, const std::wstring& version,
                                  const std::wstring& language) {
    const std::wstring platform = sizeof(void*) == 8 ? L"win64" : L"win32";
    Set(libraryKey_ + L"\\" + version + L"\\" + language + L"\\" + platform, L"", path);
}

void LibraryRegistration::Remove(const std::wstring& key, const std::wstring& value) {
    before_.push_back({key, value, ClassesText(key, value)});
    RegDeleteKeyValueW(HKEY_CLASSES_ROOT, key.c_str(), value.c_str());
}

void LibraryRegistration::Set(const std::wstring& key, const std::wstring& value,
                              const std::wstring& text) {
    before_.push_back({key, value, ClassesText(key, value)});
    SetClassesText(key, value, text);
}

// COM interfaces have no virtual destructors; the object ends itself in Release, as the final
// class.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// The dual interface by its layout: GoldMine's id, one method behind the dispatch methods.
struct AskInterface : IDispatch {
    virtual HRESULT STDMETHODCALLTYPE Ask(BSTR command, BSTR* reply) = 0;
    virtual HRESULT STDMETHODCALLTYPE AskLater(BSTR command, BSTR* reply) = 0;
};

// The object that clients get; it is its own connection point.
class AskedObject final : public AskInterface,
                          public IConnectionPointContainer,
                          public IConnectionPoint {
public:
    explicit AskedObject(AutomationServer& server) : server_(server) { ++server_.objects_; }
    AskedObject(const AskedObject&) = delete;
    AskedObject& operator=(const AskedObject&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        *object = nullptr;
        if (IsEqualIID(id, __uuidof(IUnknown)) || IsEqualIID(id, __uuidof(IDispatch)) ||
            IsEqualIID(id, goldMineInterface)) {
            *object = static_cast<AskInterface*>(this);
        } else if (IsEqualIID(id, __uuidof(IConnectionPointContainer))) {
            *object = static_cast<IConnectionPointContainer*>(this);
        } else if (IsEqualIID(id, __uuidof(IConnectionPoint))) {
            *object = static_cast<IConnectionPoint*>(this);
        } else {
            return E_NOINTERFACE;
        }
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --references_;
        if (left == 0)
            delete this;
        return left;
    }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        ADD_FAILURE() << "the method's number is known from the type library";
        return DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID, LCID, WORD kind, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT*) override {
        if (member != askMember || (kind & DISPATCH_METHOD) == 0 || parameters->cArgs != 1 ||
            parameters->rgvarg[0].vt != VT_BSTR) {
            ADD_FAILURE() << "unexpected member " << member;
            return DISP_E_MEMBERNOTFOUND;
        }
        const BSTR argument = parameters->rgvarg[0].bstrVal;
        const std::wstring command(argument, SysStringLen(argument));
        const AutomationServer::Answer answer = Handle(command);
        if (answer.result == DISP_E_EXCEPTION && exception) {
            exception->wCode = answer.code;
            exception->scode = answer.scode;
            exception->bstrSource = Bstr(answer.source).release();
            exception->bstrDescription = Bstr(answer.description).release();
        }
        if (SUCCEEDED(answer.result) && result) {
            result->vt = VT_BSTR;
            result->bstrVal = Bstr(answer.reply).release();
        }
        return answer.result;
    }
    HRESULT STDMETHODCALLTYPE Ask(BSTR command, BSTR* reply) override {
        const AutomationServer::Answer answer =
            Handle(std::wstring(command, SysStringLen(command)));
        *reply = Bstr(answer.reply).release();
        return answer.result;
    }
    HRESULT STDMETHODCALLTYPE AskLater(BSTR, BSTR*) override {
        ADD_FAILURE() << "only the first method takes commands";
        return E_NOTIMPL;
    }

    HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID id, IConnectionPoint** point) override {
        *point = nullptr;
        if (!IsEqualIID(id, askEvents))
            return CONNECT_E_NOCONNECTION;
        return QueryInterface(__uuidof(IConnectionPoint), reinterpret_cast<void**>(point));
    }

    HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* id) override {
        *id = askEvents;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE
    GetConnectionPointContainer(IConnectionPointContainer** container) override {
        return QueryInterface(__uuidof(IConnectionPointContainer),
                              reinterpret_cast<void**>(container));
    }
    HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override {
        ComPtr<IDispatch> events;
        // Not every system has a proxy for a dispatch interface under its own id.
        if (FAILED(
                sink->QueryInterface(askEvents, reinterpret_cast<void**>(events.GetAddressOf()))) &&
            FAILED(sink->QueryInterface(__uuidof(IDispatch),
                                        reinterpret_cast<void**>(events.GetAddressOf())))) {
            return CONNECT_E_CANNOTCONNECT;
        }
        *cookie = ++server_.lastCookie_;
        server_.connections_[*cookie] = std::move(events);
        server_.sinks_ = static_cast<int>(server_.connections_.size());
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override {
        if (server_.refusesUnadvise_) {
            --server_.sinks_;
            return E_FAIL;
        }
        const bool known = server_.connections_.erase(cookie) == 1;
        server_.sinks_ = static_cast<int>(server_.connections_.size());
        return known ? S_OK : CONNECT_E_NOCONNECTION;
    }
    HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections**) override { return E_NOTIMPL; }

private:
    ~AskedObject() { --server_.objects_; }

    AutomationServer::Answer Handle(const std::wstring& command) {
        {
            const std::lock_guard guard(server_.lock_);
            server_.commands_.push_back(command);
        }
        return server_.handler_(command);
    }

    AutomationServer& server_;
    std::atomic<ULONG> references_ = 0;
};

#pragma GCC diagnostic pop

namespace {

class AskedFactory final : public ComObject<IClassFactory> {
public:
    explicit AskedFactory(AutomationServer& server) : server_(server) {}
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** object) override {
        *object = nullptr;
        if (outer)
            return CLASS_E_NOAGGREGATION;
        return ComPtr<AskedObject>(new AskedObject(server_))->QueryInterface(id, object);
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

private:
    AutomationServer& server_;
};

}  // namespace

AutomationServer::AutomationServer(Handler handler) : handler_(std::move(handler)) {
    KeepInterfaces();
    thread_ = std::thread([this] { Serve(); });
    EXPECT_TRUE(WaitUntil([this] { return started_ != E_PENDING; }));
    EXPECT_EQ(started_, S_OK);
}

AutomationServer::~AutomationServer() {
    // The client's last releases are on their way.
    EXPECT_TRUE(PumpUntil([this] { return objects_ == 0; })) << "an object was not released";
    PostThreadMessageW(threadId_, WM_QUIT, 0, 0);
    // A sink that the server kept is given back on this thread.
    EXPECT_TRUE(PumpUntil([this] { return ended_.load(); }));
    thread_.join();
    EXPECT_EQ(sinks_, 0) << "a sink was not unadvised";
}

void AutomationServer::Serve() {
    MSG message;
    PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);  // makes the thread's message queue
    threadId_ = GetCurrentThreadId();
    HRESULT result = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    DWORD cookie = 0;
    if (SUCCEEDED(result)) {
        result = CoRegisterClassObject(askedClass, MakeComObject<AskedFactory>(*this).Get(),
                                       CLSCTX_LOCAL_SERVER, REGCLS_MULTIPLEUSE, &cookie);
    }
    started_ = result;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (!message.hwnd && message.message == runTask) {
            const std::unique_ptr<std::function<void()>> task(
                reinterpret_cast<std::function<void()>*>(message.wParam));
            (*task)();
            continue;
        }
        DispatchMessageW(&message);
    }
    connections_.clear();
    CoRevokeClassObject(cookie);
    CoUninitialize();
    ended_ = true;
}

void AutomationServer::Raise(DISPID member, const std::wstring& windowName, bool up, long handle) {
    const auto connections = connections_;  // a client may go while it handles the event
    for (const auto& [cookie, sink] : connections) {
        Variant name(windowName);
        Variant upFlag;
        upFlag->vt = VT_BOOL;
        upFlag->boolVal = up ? VARIANT_TRUE : VARIANT_FALSE;
        Variant windowHandle;
        windowHandle->vt = VT_I4;
        windowHandle->lVal = handle;
        VARIANT reversed[] = {*windowHandle.get(), *upFlag.get(), *name.get()};
        DISPPARAMS parameters{};
        parameters.rgvarg = reversed;
        parameters.cArgs = member == closingEvent ? 0 : 3;
        lastEventResult_ = sink->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD,
                                        &parameters, nullptr, nullptr, nullptr);
    }
}

void AutomationServer::RaiseWhenIdle(DISPID member, const std::wstring& windowName, bool up,
                                     long handle) {
    auto task = std::make_unique<std::function<void()>>(
        [this, member, windowName, up, handle] { Raise(member, windowName, up, handle); });
    if (PostThreadMessageW(threadId_, runTask, reinterpret_cast<WPARAM>(task.get()), 0))
        static_cast<void>(task.release());
}

std::vector<std::wstring> AutomationServer::commands() const {
    const std::lock_guard guard(lock_);
    return commands_;
}

}  // namespace corvane::test
