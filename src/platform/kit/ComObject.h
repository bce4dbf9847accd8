#pragma once

#include <atomic>
#include <utility>

#include "platform/kit/Windows.h"

#include <unknwn.h>
#include <wrl/client.h>

namespace corvane {

// COM interfaces have no virtual destructor by design: nobody deletes an object through one. The
// object deletes itself as what it is, by the virtual destructor below.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// The IUnknown part of an object that the program hands to COM: it counts its references and
// answers for its interfaces. Its destructor is not public: the last Release ends it.
template <class Interface, class... Others>
class ComObject : public Interface, public Others... {
public:
    ComObject() = default;
    ComObject(const ComObject&) = delete;
    ComObject& operator=(const ComObject&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) final {
        if (!object)
            return E_POINTER;
        *object = nullptr;
        if (!IsEqualIID(id, __uuidof(IUnknown)) && !Answers(id))
            return E_NOINTERFACE;
        *object = static_cast<Interface*>(this);
        ((IsEqualIID(id, __uuidof(Others)) ? * object = static_cast<Others*>(this) : nullptr), ...);
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() final { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() final {
        const ULONG left = --references_;
        if (left == 0)
            delete this;
        return left;
    }

protected:
    virtual ~ComObject() = default;
    [[nodiscard]] virtual bool Answers(REFIID id) const {
        return IsEqualIID(id, __uuidof(Interface)) || (IsEqualIID(id, __uuidof(Others)) || ...);
    }

private:
    std::atomic<ULONG> references_ = 0;
};

#pragma GCC diagnostic pop

// The one place where such an object is made: the pointer owns the first reference.
template <class Object, class... Arguments>
[[nodiscard]] Microsoft::WRL::ComPtr<Object> MakeComObject(Arguments&&... arguments) {
    return Microsoft::WRL::ComPtr<Object>(new Object(std::forward<Arguments>(arguments)...));
}

}  // namespace corvane
