#include "server/AutomationServer.h"

#include <vector>

#include "server/AutomationObject.h"

namespace practice {
namespace {

using Microsoft::WRL::ComPtr;

// A COM interface has no virtual destructor; the object ends itself in Release, as the final class.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

class ClassFactory final : public IClassFactory {
public:
    explicit ClassFactory(AutomationServer& server) : server_(server) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        if (id != IID_IUnknown && id != IID_IClassFactory) {
            *object = nullptr;
            return E_NOINTERFACE;
        }
        *object = this;
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
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** object) override {
        *object = nullptr;
        if (outer)
            return CLASS_E_NOAGGREGATION;
        return AutomationObject::Make(server_)->QueryInterface(id, object);
    }
    // The program runs until its window is closed, so no client needs to lock it.
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

private:
    ~ClassFactory() = default;

    AutomationServer& server_;
    ULONG references_ = 0;
};

#pragma GCC diagnostic pop

}  // namespace

AutomationServer::AutomationServer(const TypeLibrary& types, CommandRouter& router,
                                   EventRaiser& events, Journal& journal)
    : types_(types), router_(router), events_(events), journal_(journal) {}

AutomationServer::~AutomationServer() {
    Revoke();
    // Disconnecting releases objects, which then detach themselves.
    std::vector<ComPtr<AutomationObject>> connected;
    for (AutomationObject* object : objects_)
        connected.emplace_back(object);
    for (const ComPtr<AutomationObject>& object : connected)
        object->Disconnect();
}

HRESULT AutomationServer::Open() {
    if (const HRESULT kept = KeepInterfaces(); FAILED(kept))
        return kept;
    const ComPtr<IClassFactory> factory(new ClassFactory(*this));
    return CoRegisterClassObject(types_.classId, factory.Get(), CLSCTX_LOCAL_SERVER,
                                 REGCLS_MULTIPLEUSE, &cookie_);
}

// With a process's last object of an interface, Wine takes the interface back and waits for its
// running calls; when one of them ends in that moment, it waits for ever. One object that nobody
// calls keeps every interface that clients use, until the server disconnects it with the others.
HRESULT AutomationServer::KeepInterfaces() {
    const ComPtr<IUnknown> object = AutomationObject::Make(*this);
    ComPtr<IConnectionPointContainer> container;
    ComPtr<IConnectionPoint> events;
    HRESULT outcome = object.As(&container);
    if (SUCCEEDED(outcome))
        outcome = container->FindConnectionPoint(types_.eventsId, &events);
    const auto keep = [&](const IID& id, IUnknown* owner) {
        ComPtr<IStream> stream;
        if (SUCCEEDED(outcome))
            outcome = CreateStreamOnHGlobal(nullptr, TRUE, &stream);
        if (SUCCEEDED(outcome)) {
            outcome = CoMarshalInterface(stream.Get(), id, owner, MSHCTX_LOCAL, nullptr,
                                         MSHLFLAGS_TABLESTRONG);
        }
    };
    for (const IID& id : {userInterfaceId, IID_IDispatch, IID_IConnectionPointContainer})
        keep(id, object.Get());
    keep(IID_IConnectionPoint, events.Get());
    return outcome;
}

void AutomationServer::Revoke() {
    if (cookie_ != 0) {
        CoRevokeClassObject(cookie_);
        cookie_ = 0;
    }
}

void AutomationServer::Attach(AutomationObject* object) {
    objects_.insert(object);
    events_.Attach(object);
}

void AutomationServer::Detach(AutomationObject* object) {
    events_.Detach(object);
    objects_.erase(object);
}

}  // namespace practice
