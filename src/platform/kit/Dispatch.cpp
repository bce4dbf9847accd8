#include "platform/kit/Dispatch.h"

#include <string>

#include "platform/kit/ComError.h"
#include "util/RuntimeError.h"

namespace corvane {

namespace {

// Takes over the texts of the exception information.
RuntimeError ErrorFromException(EXCEPINFO& exception) {
    if (exception.pfnDeferredFillIn)
        exception.pfnDeferredFillIn(&exception);
    const auto take = [](BSTR text) {
        Bstr owner;
        *owner.put() = text;
        return owner.text();
    };
    RuntimeError error = exception.wCode != 0 ? MakeRuntimeError(exception.wCode)
                                              : ErrorFromHResult(exception.scode);
    error.source = take(exception.bstrSource);
    if (std::wstring description = take(exception.bstrDescription); !description.empty())
        error.description = std::move(description);
    error.helpFile = take(exception.bstrHelpFile);
    error.helpContext = static_cast<std::int32_t>(exception.dwHelpContext);
    return error;
}

}  // namespace

void InvokeOrThrow(IDispatch& object, DISPID member, WORD kind, std::span<VARIANT> reversed,
                   VARIANT* result) {
    DISPID propertyPut = DISPID_PROPERTYPUT;
    DISPPARAMS parameters{};
    parameters.rgvarg = reversed.data();
    parameters.cArgs = static_cast<UINT>(reversed.size());
    if (kind == DISPATCH_PROPERTYPUT) {
        parameters.rgdispidNamedArgs = &propertyPut;
        parameters.cNamedArgs = 1;
    }
    EXCEPINFO exception{};
    UINT wrongArgument = 0;
    const HRESULT status = object.Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, kind, &parameters,
                                         result, &exception, &wrongArgument);
    if (status == DISP_E_EXCEPTION)
        throw ErrorFromException(exception);
    ThrowIfFailed(status);
}

void DispatchObject::Invoke(std::wstring_view member, WORD kind, std::span<VARIANT> reversed,
                            VARIANT* result) const {
    std::wstring name(member);
    wchar_t* names = name.data();
    DISPID id = DISPID_UNKNOWN;
    ThrowIfFailed(object_->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id));
    InvokeOrThrow(*object_.Get(), id, kind, reversed, result);
}

void DispatchObject::Call(std::wstring_view member) const {
    Invoke(member, DISPATCH_METHOD, {}, nullptr);
}

void DispatchObject::Call(std::wstring_view member, std::wstring_view argument) const {
    Variant value(argument);
    Invoke(member, DISPATCH_METHOD, {value.get(), 1}, nullptr);
}

void DispatchObject::Call(std::wstring_view member, std::wstring_view first,
                          std::wstring_view second) const {
    Variant firstValue(first);
    Variant secondValue(second);
    VARIANT reversed[] = {*secondValue.get(), *firstValue.get()};
    Invoke(member, DISPATCH_METHOD, reversed, nullptr);
}

void DispatchObject::Put(std::wstring_view member, std::wstring_view value) const {
    Variant text(value);
    Invoke(member, DISPATCH_PROPERTYPUT, {text.get(), 1}, nullptr);
}

std::wstring DispatchObject::GetText(std::wstring_view member) const {
    Variant result;
    Invoke(member, DISPATCH_PROPERTYGET, {}, result.get());
    // What holds no text at all may answer so: the HTML engine does for an empty body.
    if (result->vt == VT_NULL)
        return {};
    ThrowIfFailed(VariantChangeType(result.get(), result.get(), 0, VT_BSTR));
    return Bstr::TextOf(result->bstrVal);
}

std::optional<DispatchObject> DispatchObject::FindMember(std::wstring_view member) const {
    Variant result;
    Invoke(member, DISPATCH_PROPERTYGET, {}, result.get());
    if (result->vt == VT_EMPTY || result->vt == VT_NULL)
        return std::nullopt;
    ThrowIfFailed(VariantChangeType(result.get(), result.get(), 0, VT_DISPATCH));
    if (!result->pdispVal)
        return std::nullopt;
    return DispatchObject(Microsoft::WRL::ComPtr<IDispatch>(result->pdispVal));
}

DispatchObject DispatchObject::GetMember(std::wstring_view member) const {
    std::optional<DispatchObject> found = FindMember(member);
    if (!found)
        throw MakeRuntimeError(ErrorNumber::TypeMismatch);
    return *std::move(found);
}

}  // namespace corvane
