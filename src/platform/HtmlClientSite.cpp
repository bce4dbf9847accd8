#include "platform/HtmlClientSite.h"

#include "platform/kit/DispatchByNumber.h"

#include <mshtmdid.h>
#include <ocidl.h>

namespace corvane {

namespace {

using Microsoft::WRL::ComPtr;

// Pictures, videos and sounds are not loaded either, since none of their flags stands here.
constexpr long downloadControl =
    DLCTL_NO_SCRIPTS | DLCTL_NO_JAVA | DLCTL_NO_RUNACTIVEXCTLS | DLCTL_NO_DLACTIVEXCTLS |
    DLCTL_NO_FRAMEDOWNLOAD | DLCTL_NO_BEHAVIORS |  // scripts by way of a style sheet
    DLCTL_NO_CLIENTPULL |                          // "refresh" leads to another page
    DLCTL_FORCEOFFLINE |  // style sheets have no flag of their own, and tell on the reader too
    DLCTL_SILENT;         // nobody knows what a message of the engine is about

// The engine asks its client site for the properties of its surroundings, by their numbers.
class HtmlClientSite final : public DispatchByNumber<IOleClientSite> {
public:
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS*,
                                     VARIANT* result, EXCEPINFO*, UINT*) override {
        if (member != DISPID_AMBIENT_DLCONTROL)
            return DISP_E_MEMBERNOTFOUND;
        if (!result)
            return E_POINTER;
        result->vt = VT_I4;
        result->lVal = downloadControl;
        return S_OK;
    }

    // The document is never stored or shown.
    HRESULT STDMETHODCALLTYPE SaveObject() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetContainer(IOleContainer** container) override {
        if (!container)
            return E_POINTER;
        *container = nullptr;
        return E_NOINTERFACE;
    }
    HRESULT STDMETHODCALLTYPE ShowObject() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnShowWindow(WINBOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE RequestNewObjectLayout() override { return E_NOTIMPL; }
};

}  // namespace

void TakeSiteBack::operator()(IOleObject* document) const {
    document->SetClientSite(nullptr);
    document->Release();
}

SitedDocument ForbidActiveContent(IUnknown& document) {
    ComPtr<IOleObject> object;
    ComPtr<IOleControl> control;
    if (FAILED(document.QueryInterface(__uuidof(IOleObject),
                                       reinterpret_cast<void**>(object.GetAddressOf()))) ||
        FAILED(document.QueryInterface(__uuidof(IOleControl),
                                       reinterpret_cast<void**>(control.GetAddressOf()))) ||
        FAILED(object->SetClientSite(MakeComObject<HtmlClientSite>().Get()))) {
        return nullptr;
    }
    SitedDocument sited(object.Detach());
    // Not every document asks by itself before it is read.
    if (FAILED(control->OnAmbientPropertyChange(DISPID_AMBIENT_DLCONTROL)))
        return nullptr;
    return sited;
}

}  // namespace corvane
