#pragma once

#include <windows.h>

#include <ocidl.h>
#include <oleidl.h>

namespace test_support {

// What an HTML engine's document offers to the program that it is embedded in, all refused but the
// two calls that a test's document answers itself: SetClientSite and OnAmbientPropertyChange. The
// base brings IOleObject and IOleControl.
template <class Base>
class EmbeddedObject : public Base {
public:
    using Base::Base;

    HRESULT STDMETHODCALLTYPE GetClientSite(IOleClientSite**) final { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetHostNames(LPCOLESTR, LPCOLESTR) final { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Close(DWORD) final { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetMoniker(DWORD, IMoniker*) final { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMoniker(DWORD, DWORD, IMoniker**) final { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE InitFromData(IDataObject*, WINBOOL, DWORD) final { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetClipboardData(DWORD, IDataObject**) final { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DoVerb(LONG, LPMSG, IOleClientSite*, LONG, HWND, LPCRECT) final {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE EnumVerbs(IEnumOLEVERB**) final { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Update() final { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE IsUpToDate() final { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetUserClassID(CLSID*) final { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetUserType(DWORD, LPOLESTR*) final { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetExtent(DWORD, SIZEL*) final { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetExtent(DWORD, SIZEL*) final { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Advise(IAdviseSink*, DWORD*) final { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD) final { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EnumAdvise(IEnumSTATDATA**) final { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMiscStatus(DWORD, DWORD*) final { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetColorScheme(LOGPALETTE*) final { return E_NOTIMPL; }

    HRESULT STDMETHODCALLTYPE GetControlInfo(CONTROLINFO*) final { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnMnemonic(MSG*) final { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE FreezeEvents(WINBOOL) final { return E_NOTIMPL; }

protected:
    ~EmbeddedObject() = default;
};

}  // namespace test_support
