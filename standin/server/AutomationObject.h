#pragma once

#include <windows.h>

#include <oaidl.h>
#include <ocidl.h>
#include <wrl/client.h>

#include <map>
#include <string>

#include "commands/Client.h"
#include "envelope/Command.h"
#include "events/EventRaiser.h"

namespace practice {

class AutomationServer;

// COM interfaces have no virtual destructors; an object ends itself in Release, as the final class.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// The interface by its layout: the command method follows the dispatch methods. Its names are the
// type library's.
struct IUserInterface : IDispatch {
    virtual HRESULT STDMETHODCALLTYPE Perform(BSTR command, BSTR* reply) = 0;

protected:
    ~IUserInterface() = default;
};

// GoldMine's user-interface automation object; each client has its own.
class AutomationObject final : public IUserInterface,
                               public IConnectionPointContainer,
                               public IProvideClassInfo2,
                               public ISupportErrorInfo,
                               public EventTarget {
public:
    static Microsoft::WRL::ComPtr<IUnknown> Make(AutomationServer& server);

    // Cuts the clients off.
    void Disconnect();

    // IUnknown
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;

    // IDispatch
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* members) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID id, LCID locale, WORD flags,
                                     DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                     UINT* argumentError) override;

    // IUserInterface
    HRESULT STDMETHODCALLTYPE Perform(BSTR command, BSTR* reply) override;

    // IConnectionPointContainer
    HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) override;
    HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID id, IConnectionPoint** point) override;

    // IProvideClassInfo2
    HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetGUID(DWORD kind, GUID* id) override;

    // ISupportErrorInfo
    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID id) override;

    // EventTarget
    [[nodiscard]] bool Watches(const std::wstring& windowName) const override;
    void Deliver(const std::wstring& windowName, bool up, long windowHandle) override;
    void Hold() override { AddRef(); }
    void LetGo() override { Release(); }

private:
    // The place where clients connect their event sinks. Lives and dies with its object.
    class Events final : public IConnectionPoint {
    public:
        explicit Events(AutomationObject& owner) : owner_(owner) {}

        HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
        ULONG STDMETHODCALLTYPE AddRef() override { return owner_.AddRef(); }
        ULONG STDMETHODCALLTYPE Release() override { return owner_.Release(); }
        HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* id) override;
        HRESULT STDMETHODCALLTYPE
        GetConnectionPointContainer(IConnectionPointContainer** container) override;
        HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override;
        HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override;
        HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections** connections) override;

        std::map<DWORD, Microsoft::WRL::ComPtr<IDispatch>> sinks;

    private:
        AutomationObject& owner_;
        DWORD lastCookie_ = 0;
    };

    explicit AutomationObject(AutomationServer& server);
    ~AutomationObject();

    AutomationServer& server_;
    ULONG references_ = 0;
    Client client_;
    Events events_{*this};
};

#pragma GCC diagnostic pop

}  // namespace practice
