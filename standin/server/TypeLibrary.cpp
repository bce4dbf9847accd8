#include "server/TypeLibrary.h"

#include <memory>
#include <vector>

#include "shared/Handles.h"
#include "shared/Options.h"

namespace practice {
namespace {

using Microsoft::WRL::ComPtr;

// What a type library has lent, given back at the end.
template <typename T, typename GiveBack>
std::unique_ptr<T, GiveBack> Lent(T* lent, GiveBack giveBack) {
    return {lent, giveBack};
}

auto AttributesOf(ITypeInfo* info) {
    TYPEATTR* attributes = nullptr;
    info->GetTypeAttr(&attributes);
    return Lent(attributes, [info](TYPEATTR* lent) { info->ReleaseTypeAttr(lent); });
}

// The type that a class implements at this place.
ComPtr<ITypeInfo> Implemented(ITypeInfo* classInfo, UINT index) {
    HREFTYPE reference = 0;
    ComPtr<ITypeInfo> info;
    if (SUCCEEDED(classInfo->GetRefTypeOfImplType(index, &reference)))
        classInfo->GetRefTypeInfo(reference, &info);
    return info;
}

bool ReadClass(ITypeInfo* classInfo, TypeLibrary& result) {
    const auto classAttributes = AttributesOf(classInfo);
    bool hasInterface = false;
    ComPtr<ITypeInfo> events;
    for (UINT i = 0; i < classAttributes->cImplTypes; ++i) {
        int flags = 0;
        classInfo->GetImplTypeFlags(i, &flags);
        const ComPtr<ITypeInfo> implemented = Implemented(classInfo, i);
        if (!implemented)
            continue;
        if ((flags & IMPLTYPEFLAG_FSOURCE) != 0) {
            if ((flags & IMPLTYPEFLAG_FDEFAULT) != 0)
                events = implemented;
        } else if (AttributesOf(implemented.Get())->guid == userInterfaceId) {
            hasInterface = true;
        }
    }
    if (!hasInterface || !events)
        return false;
    std::wstring eventName = L"WindowUpDown";
    LPOLESTR name = eventName.data();
    if (FAILED(events->GetIDsOfNames(&name, 1, &result.windowUpDownMember)))
        return false;
    result.classInfo = classInfo;
    result.classId = classAttributes->guid;
    result.eventsId = AttributesOf(events.Get())->guid;
    return true;
}

// The command method: the first one after the dispatch methods.
HRESULT ReadCommandMember(TypeLibrary& result) {
    HREFTYPE reference = 0;
    ComPtr<ITypeInfo> ownMethods;
    HRESULT outcome = result.interfaceInfo->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference);
    if (SUCCEEDED(outcome))
        outcome = result.interfaceInfo->GetRefTypeInfo(reference, &ownMethods);
    FUNCDESC* description = nullptr;
    if (SUCCEEDED(outcome))
        outcome = ownMethods->GetFuncDesc(0, &description);
    const auto method =
        Lent(description, [&](FUNCDESC* lent) { ownMethods->ReleaseFuncDesc(lent); });
    if (SUCCEEDED(outcome))
        result.commandMember = method->memid;
    return outcome;
}

std::wstring NameOf(ITypeLib* library, INT index) {
    BString name;
    library->GetDocumentation(index, name.put(), nullptr, nullptr, nullptr);
    return std::wstring(name.view());
}

}  // namespace

HRESULT ReadTypeLibrary(TypeLibrary& result) {
    HRESULT outcome = LoadTypeLibEx(ProgramPath().c_str(), REGKIND_NONE, &result.library);
    if (FAILED(outcome))
        return outcome;
    TLIBATTR* libraryAttributes = nullptr;
    outcome = result.library->GetLibAttr(&libraryAttributes);
    if (FAILED(outcome))
        return outcome;
    const auto attributes =
        Lent(libraryAttributes, [&](TLIBATTR* lent) { result.library->ReleaseTLibAttr(lent); });
    result.libraryId = attributes->guid;
    result.majorVersion = attributes->wMajorVerNum;
    result.minorVersion = attributes->wMinorVerNum;
    result.locale = attributes->lcid;
    result.system = attributes->syskind;

    const UINT count = result.library->GetTypeInfoCount();
    for (UINT i = 0; i < count && !result.classInfo; ++i) {
        TYPEKIND kind{};
        ComPtr<ITypeInfo> info;
        if (SUCCEEDED(result.library->GetTypeInfoType(i, &kind)) && kind == TKIND_COCLASS &&
            SUCCEEDED(result.library->GetTypeInfo(i, &info)) && ReadClass(info.Get(), result)) {
            result.className = NameOf(result.library.Get(), static_cast<INT>(i));
        }
    }
    if (!result.classInfo)
        return TYPE_E_ELEMENTNOTFOUND;
    result.programId = NameOf(result.library.Get(), -1) + L"." + result.className;
    outcome = result.library->GetTypeInfoOfGuid(userInterfaceId, &result.interfaceInfo);
    return FAILED(outcome) ? outcome : ReadCommandMember(result);
}

}  // namespace practice
