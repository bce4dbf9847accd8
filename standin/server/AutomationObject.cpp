#include "server/AutomationObject.h"

#include <objbase.h>
#include <olectl.h>

#include "server/AutomationServer.h"
#include "shared/Handles.h"

namespace practice {
namespace {

using Microsoft::WRL::ComPtr;

// Run-time error numbers up to this one are not HRESULTs.
constexpr long largestErrorNumber = 0xFFFF;

HRESULT ResultOf(const Answer& exception) {
    return exception.number > 0 && exception.number <= largestErrorNumber
               ? MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, static_cast<WORD>(exception.number))
               : static_cast<HRESULT>(exception.number);
}

void PublishError(const Answer& exception) {
    ComPtr<ICreateErrorInfo> creator;
    ComPtr<IErrorInfo> error;
    if (SUCCEEDED(CreateErrorInfo(&creator))) {
        BString source(exception.source);
        BString description(exception.description);
        creator->SetGUID(userInterfaceId);
        creator->SetSource(source.get());
        creator->SetDescription(description.get());
        if (SUCCEEDED(creator.As(&error)))
            SetErrorInfo(0, error.Get());
    }
}

void FillException(const Answer& answer, EXCEPINFO* exception) {
    if (!exception)
        return;
    *exception = EXCEPINFO{};
    if (answer.number > 0 && answer.number <= largestErrorNumber)
        exception->wCode = static_cast<WORD>(answer.number);
    else
        exception->scode = static_cast<SCODE>(answer.number);
    exception->bstrSource = BString(answer.source).release();
    exception->bstrDescription = BString(answer.description).release();
}

// True when the sink's process is gone or has let go of the sink.
bool IsDisconnected(HRESULT result) {
    return result == RPC_E_DISCONNECTED || result == RPC_E_SERVER_DIED ||
           result == RPC_E_SERVER_DIED_DNE || result == CO_E_OBJNOTCONNECTED ||
           result == HRESULT_FROM_WIN32(RPC_S_SERVER_UNAVAILABLE) ||
           result == HRESULT_FROM_WIN32(RPC_S_CALL_FAILED) ||
           result == HRESULT_FROM_WIN32(RPC_S_CALL_FAILED_DNE);
}

}  // namespace

ComPtr<IUnknown> AutomationObject::Make(AutomationServer& server) {
    return ComPtr<IUnknown>(static_cast<IUserInterface*>(new AutomationObject(server)));
}

AutomationObject::AutomationObject(AutomationServer& server) : server_(server) {
    server_.Attach(this);
}

AutomationObject::~AutomationObject() {
    server_.Detach(this);
}

void AutomationObject::Disconnect() {
    CoDisconnectObject(static_cast<IUserInterface*>(this), 0);
    CoDisconnectObject(&events_, 0);
    events_.sinks.clear();
}

HRESULT AutomationObject::QueryInterface(REFIID id, void** object) {
    *object = nullptr;
    if (id == IID_IUnknown || id == IID_IDispatch || id == userInterfaceId)
        *object = static_cast<IUserInterface*>(this);
    else if (id == IID_IConnectionPointContainer)
        *object = static_cast<IConnectionPointContainer*>(this);
    else if (id == IID_IProvideClassInfo || id == IID_IProvideClassInfo2)
        *object = static_cast<IProvideClassInfo2*>(this);
    else if (id == IID_ISupportErrorInfo)
        *object = static_cast<ISupportErrorInfo*>(this);
    else
        return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

ULONG AutomationObject::AddRef() {
    return ++references_;
}

ULONG AutomationObject::Release() {
    const ULONG left = --references_;
    if (left == 0)
        delete this;
    return left;
}

HRESULT AutomationObject::GetTypeInfoCount(UINT* count) {
    *count = 1;
    return S_OK;
}

HRESULT AutomationObject::GetTypeInfo(UINT index, LCID, ITypeInfo** info) {
    *info = nullptr;
    return index == 0 ? server_.types().interfaceInfo.CopyTo(info) : DISP_E_BADINDEX;
}

HRESULT AutomationObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                        DISPID* members) {
    return DispGetIDsOfNames(server_.types().interfaceInfo.Get(), names, count, members);
}

HRESULT AutomationObject::Invoke(DISPID member, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                 VARIANT* result, EXCEPINFO* exception, UINT*) {
    if (member != server_.types().commandMember || (flags & DISPATCH_METHOD) == 0)
        return DISP_E_MEMBERNOTFOUND;
    if (parameters->cArgs != 1)
        return DISP_E_BADPARAMCOUNT;
    VARIANT command;
    VariantInit(&command);
    const HRESULT converted = VariantChangeType(&command, &parameters->rgvarg[0], 0, VT_BSTR);
    if (FAILED(converted))
        return converted;
    BString text;
    *text.put() = command.bstrVal;
    const Answer answer = server_.router().Run(text.view(), client_);
    switch (answer.kind) {
        case Answer::Kind::Result:
            return answer.result;
        case Answer::Kind::Exception:
            FillException(answer, exception);
            return DISP_E_EXCEPTION;
        case Answer::Kind::Reply:
            break;
    }
    if (result) {
        VariantInit(result);
        result->vt = VT_BSTR;
        result->bstrVal = BString(answer.reply).release();
    }
    return S_OK;
}

HRESULT AutomationObject::Perform(BSTR command, BSTR* reply) {
    *reply = nullptr;
    const Answer answer = server_.router().Run({command, SysStringLen(command)}, client_);
    switch (answer.kind) {
        case Answer::Kind::Result:
            return answer.result;
        case Answer::Kind::Exception:
            PublishError(answer);
            return ResultOf(answer);
        case Answer::Kind::Reply:
            break;
    }
    *reply = BString(answer.reply).release();
    return *reply ? S_OK : E_OUTOFMEMORY;
}

// Clients find the connection point by the event interface's id.
HRESULT AutomationObject::EnumConnectionPoints(IEnumConnectionPoints** points) {
    *points = nullptr;
    return E_NOTIMPL;
}

HRESULT AutomationObject::FindConnectionPoint(REFIID id, IConnectionPoint** point) {
    *point = nullptr;
    if (id != server_.types().eventsId)
        return CONNECT_E_NOCONNECTION;
    *point = &events_;
    events_.AddRef();
    return S_OK;
}

HRESULT AutomationObject::GetClassInfo(ITypeInfo** info) {
    return server_.types().classInfo.CopyTo(info);
}

HRESULT AutomationObject::GetGUID(DWORD kind, GUID* id) {
    if (kind != GUIDKIND_DEFAULT_SOURCE_DISP_IID) {
        *id = GUID_NULL;
        return E_INVALIDARG;
    }
    *id = server_.types().eventsId;
    return S_OK;
}

HRESULT AutomationObject::InterfaceSupportsErrorInfo(REFIID id) {
    return id == userInterfaceId ? S_OK : S_FALSE;
}

bool AutomationObject::Watches(const std::wstring& windowName) const {
    return client_.watchedWindows.contains(windowName);
}

void AutomationObject::Deliver(const std::wstring& windowName, bool up, long windowHandle) {
    const std::map<DWORD, ComPtr<IDispatch>> sinks = events_.sinks;
    for (const auto& [cookie, sink] : sinks) {
        server_.journal().Event(windowName, up, windowHandle);
        const BString name(windowName);
        // Arguments stand in reverse order.
        VARIANT arguments[3]{};
        arguments[0].vt = VT_I4;
        arguments[0].lVal = windowHandle;
        arguments[1].vt = VT_BOOL;
        arguments[1].boolVal = up ? VARIANT_TRUE : VARIANT_FALSE;
        arguments[2].vt = VT_BSTR;
        arguments[2].bstrVal = name.get();
        DISPPARAMS parameters{arguments, nullptr, 3, 0};
        const HRESULT result =
            sink->Invoke(server_.types().windowUpDownMember, IID_NULL, LOCALE_USER_DEFAULT,
                         DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr);
        if (FAILED(result))
            server_.journal().Note(L"the event met " + HexadecimalText(result));
        if (IsDisconnected(result))
            events_.sinks.erase(cookie);
    }
}

HRESULT AutomationObject::Events::QueryInterface(REFIID id, void** object) {
    if (id != IID_IUnknown && id != IID_IConnectionPoint) {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    *object = this;
    AddRef();
    return S_OK;
}

HRESULT AutomationObject::Events::GetConnectionInterface(IID* id) {
    *id = owner_.server_.types().eventsId;
    return S_OK;
}

HRESULT AutomationObject::Events::GetConnectionPointContainer(
    IConnectionPointContainer** container) {
    *container = &owner_;
    owner_.AddRef();
    return S_OK;
}

HRESULT AutomationObject::Events::Advise(IUnknown* sink, DWORD* cookie) {
    *cookie = 0;
    if (!sink)
        return E_POINTER;
    // A sink may offer the event interface itself or only plain dispatch.
    ComPtr<IDispatch> dispatch;
    if (FAILED(sink->QueryInterface(owner_.server_.types().eventsId, &dispatch)) &&
        FAILED(sink->QueryInterface(IID_IDispatch, &dispatch))) {
        return CONNECT_E_CANNOTCONNECT;
    }
    if (const HRESULT allowed = owner_.server_.router().Listen(); FAILED(allowed))
        return allowed;
    sinks[++lastCookie_] = dispatch;
    *cookie = lastCookie_;
    return S_OK;
}

HRESULT AutomationObject::Events::Unadvise(DWORD cookie) {
    return sinks.erase(cookie) == 0 ? CONNECT_E_NOCONNECTION : S_OK;
}

HRESULT AutomationObject::Events::EnumConnections(IEnumConnections** connections) {
    *connections = nullptr;
    return E_NOTIMPL;
}

}  // namespace practice
