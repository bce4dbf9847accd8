#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "platform/kit/Bstr.h"

#include <wrl/client.h>

namespace corvane {

// Calls one member of an automation object; arguments stand in reverse order, as the platform
// wants them. A failure raises: exception information gives its own number, source and
// description.
void InvokeOrThrow(IDispatch& object, DISPID member, WORD kind, std::span<VARIANT> reversed,
                   VARIANT* result);

// An automation object whose members are found by name when they are called.
class DispatchObject {
public:
    explicit DispatchObject(Microsoft::WRL::ComPtr<IDispatch> object)
        : object_(std::move(object)) {}

    void Call(std::wstring_view member) const;
    void Call(std::wstring_view member, std::wstring_view argument) const;
    void Call(std::wstring_view member, std::wstring_view first, std::wstring_view second) const;
    void Put(std::wstring_view member, std::wstring_view value) const;
    [[nodiscard]] std::wstring GetText(std::wstring_view member) const;
    // Nothing when the member holds nothing; raises error 13 when it holds no object.
    [[nodiscard]] std::optional<DispatchObject> FindMember(std::wstring_view member) const;
    // Raises error 13 in either case.
    [[nodiscard]] DispatchObject GetMember(std::wstring_view member) const;

private:
    void Invoke(std::wstring_view member, WORD kind, std::span<VARIANT> reversed,
                VARIANT* result) const;

    Microsoft::WRL::ComPtr<IDispatch> object_;
};

}  // namespace corvane
