// An HTML engine whose documents are never ready: it takes every call and goes on loading. A test
// registers it in the place of the system's.
#include <windows.h>

#include <oaidl.h>

#include <cwchar>

#include "support/windows/EmbeddedObject.h"

namespace {

// COM interfaces have no virtual destructors; these objects live as long as the library.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

template <class Interface, class... Others>
class LastingObject : public Interface, public Others... {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) final {
        const bool known =
            IsEqualIID(id, __uuidof(IUnknown)) || IsEqualIID(id, __uuidof(Interface));
        *object = known ? static_cast<Interface*>(this) : nullptr;
        ((IsEqualIID(id, __uuidof(Others)) ? * object = static_cast<Others*>(this) : nullptr), ...);
        return *object ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() final { return 2; }
    ULONG STDMETHODCALLTYPE Release() final { return 1; }

protected:
    ~LastingObject() = default;
};

// The document, and each of the elements that it is asked for.
class UnreadyDocument final
    : public test_support::EmbeddedObject<LastingObject<IDispatch, IOleObject, IOleControl>> {
public:
    HRESULT STDMETHODCALLTYPE SetClientSite(IOleClientSite*) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnAmbientPropertyChange(DISPID) override { return S_OK; }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID,
                                            DISPID* ids) override {
        for (DISPID id = 0; id < memberCount; ++id) {
            if (_wcsicmp(names[0], members[id]) == 0) {
                ids[0] = id;
                return S_OK;
            }
        }
        return DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID, LCID, WORD kind, DISPPARAMS*,
                                     VARIANT* result, EXCEPINFO*, UINT*) override {
        if (kind == DISPATCH_PROPERTYGET && member < elementCount) {
            result->vt = VT_DISPATCH;
            result->pdispVal = this;
        } else if (kind == DISPATCH_PROPERTYGET) {
            result->vt = VT_BSTR;
            result->bstrVal = SysAllocString(L"loading");
        }
        return S_OK;
    }

private:
    static constexpr DISPID elementCount = 2;
    static constexpr DISPID memberCount = 10;
    static constexpr const wchar_t* members[memberCount] = {
        L"body",       L"documentElement",    L"open",      L"write",     L"close",
        L"readyState", L"insertAdjacentHTML", L"innerHTML", L"innerText", L"outerHTML"};
};

class DocumentFactory final : public LastingObject<IClassFactory> {
public:
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID id, void** object) override {
        static UnreadyDocument document;
        return document.QueryInterface(id, object);
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
};

#pragma GCC diagnostic pop

}  // namespace

STDAPI DllGetClassObject(REFCLSID, REFIID id, void** object) {
    static DocumentFactory factory;
    return factory.QueryInterface(id, object);
}

STDAPI DllCanUnloadNow() {
    return S_FALSE;
}
