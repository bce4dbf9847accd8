#pragma once

#include "platform/kit/ComObject.h"

#include <oaidl.h>

namespace corvane {

// The part of an IDispatch that is the same in all objects whose members are called by number:
// there are no names and no type information.
template <class... Others>
class DispatchByNumber : public ComObject<IDispatch, Others...> {
public:
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) final {
        if (!count)
            return E_POINTER;
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) final { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) final {
        return E_NOTIMPL;
    }
};

}  // namespace corvane
