#include "platform/goldmine/GoldMineTypeLibrary.h"

#include <array>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>

#include "platform/kit/Bstr.h"
#include "platform/kit/ComError.h"
#include "platform/kit/Handles.h"
#include "util/Text.h"

#include <wrl/client.h>

namespace corvane {

namespace {

using Microsoft::WRL::ComPtr;

[[noreturn]] void NotRegistered() {
    throw MakeRuntimeError(ErrorNumber::CannotCreateObject);
}

std::wstring TextOfGuid(const GUID& guid) {
    std::array<wchar_t, 40> text{};
    StringFromGUID2(guid, text.data(), static_cast<int>(text.size()));
    return text.data();
}

// A text value under the classes root in one registry view; empty when it is missing.
std::wstring ClassesText(const std::wstring& path, const wchar_t* value, DWORD view) {
    UniqueRegistryKey key;
    if (RegOpenKeyExW(HKEY_CLASSES_ROOT, path.c_str(), 0, KEY_QUERY_VALUE | view, key.put()) !=
        ERROR_SUCCESS) {
        return {};
    }
    std::array<wchar_t, 128> buffer{};
    auto bytes = static_cast<DWORD>((buffer.size() - 1) * sizeof(wchar_t));
    DWORD type = 0;
    if (RegQueryValueExW(key.get(), value, nullptr, &type, reinterpret_cast<BYTE*>(buffer.data()),
                         &bytes) != ERROR_SUCCESS ||
        type != REG_SZ) {
        return {};
    }
    return buffer.data();
}

struct LibraryVersion {
    WORD majorNumber = 1;
    WORD minorNumber = 0;
};

// "2.a" is version 2.10: both numbers are hexadecimal.
LibraryVersion VersionFromText(const std::wstring& text) {
    LibraryVersion version;
    wchar_t* end = nullptr;
    const unsigned long major = std::wcstoul(text.c_str(), &end, 16);
    if (end == text.c_str())
        return version;
    version.majorNumber = static_cast<WORD>(major);
    if (*end == L'.')
        version.minorNumber = static_cast<WORD>(std::wcstoul(end + 1, nullptr, 16));
    return version;
}

ComPtr<ITypeLib> LoadLibrary() {
    const std::wstring path = Join(L"Interface\\", TextOfGuid(goldMineInterface), L"\\TypeLib");
    // Own view first: then the one of programs of the other word length.
    for (const DWORD view : {DWORD{0}, DWORD{KEY_WOW64_32KEY}, DWORD{KEY_WOW64_64KEY}}) {
        GUID library{};
        const std::wstring id = ClassesText(path, nullptr, view);
        if (id.empty() || FAILED(CLSIDFromString(id.c_str(), &library)))
            continue;
        const LibraryVersion version = VersionFromText(ClassesText(path, L"Version", view));
        ComPtr<ITypeLib> loaded;
        if (SUCCEEDED(LoadRegTypeLib(library, version.majorNumber, version.minorNumber,
                                     LOCALE_NEUTRAL, loaded.GetAddressOf()))) {
            return loaded;
        }
    }
    NotRegistered();
}

// Gives a description back to the type that handed it out.
template <auto giveBack>
struct GiveBack {
    ITypeInfo& type;
    void operator()(auto* description) const { (type.*giveBack)(description); }
};

auto AttributesOf(ITypeInfo& type) {
    TYPEATTR* attributes = nullptr;
    ThrowIfFailed(type.GetTypeAttr(&attributes));
    return std::unique_ptr<TYPEATTR, GiveBack<&ITypeInfo::ReleaseTypeAttr>>(attributes, {type});
}

auto FunctionOf(ITypeInfo& type, UINT index) {
    FUNCDESC* function = nullptr;
    ThrowIfFailed(type.GetFuncDesc(index, &function));
    return std::unique_ptr<FUNCDESC, GiveBack<&ITypeInfo::ReleaseFuncDesc>>(function, {type});
}

ComPtr<ITypeInfo> ReferencedType(ITypeInfo& type, UINT implementedIndex) {
    HREFTYPE reference = 0;
    ComPtr<ITypeInfo> referenced;
    ThrowIfFailed(type.GetRefTypeOfImplType(implementedIndex, &reference));
    ThrowIfFailed(type.GetRefTypeInfo(reference, referenced.GetAddressOf()));
    return referenced;
}

// Fills in the class and its event interface when the type is the class that we look for.
bool ReadClass(ITypeInfo& type, GoldMineIdentifiers& found, ComPtr<ITypeInfo>& events) {
    const auto attributes = AttributesOf(type);
    if (attributes->typekind != TKIND_COCLASS)
        return false;
    bool implements = false;
    ComPtr<ITypeInfo> source;
    for (UINT index = 0; index < attributes->cImplTypes; ++index) {
        INT flags = 0;
        ThrowIfFailed(type.GetImplTypeFlags(index, &flags));
        const ComPtr<ITypeInfo> implemented = ReferencedType(type, index);
        const auto interfaceAttributes = AttributesOf(*implemented.Get());
        const bool isSource = (flags & IMPLTYPEFLAG_FSOURCE) != 0;
        const bool isDefault = (flags & IMPLTYPEFLAG_FDEFAULT) != 0;
        if (isSource && (isDefault || !source))
            source = implemented;
        if (!isSource && IsEqualIID(interfaceAttributes->guid, goldMineInterface))
            implements = true;
    }
    if (!implements)
        return false;
    found.automationClass = attributes->guid;
    events = source;
    return true;
}

// IUnknown's and IDispatch's own methods, which a dual interface lists before its own.
bool IsDispatchMethod(MEMBERID member) {
    return (member >= 0x60000000 && member <= 0x60000002) ||
           (member >= 0x60010000 && member <= 0x60010003);
}

DISPID FirstMethod(ITypeInfo& type) {
    const auto attributes = AttributesOf(type);
    for (UINT index = 0; index < attributes->cFuncs; ++index) {
        const auto function = FunctionOf(type, index);
        if (function->invkind != INVOKE_FUNC || IsDispatchMethod(function->memid))
            continue;
        return function->memid;
    }
    NotRegistered();
}

DISPID MethodByName(ITypeInfo& type, std::wstring_view name) {
    const auto attributes = AttributesOf(type);
    for (UINT index = 0; index < attributes->cFuncs; ++index) {
        const auto function = FunctionOf(type, index);
        Bstr functionName;
        UINT names = 0;
        if (FAILED(type.GetNames(function->memid, functionName.put(), 1, &names)))
            continue;
        if (functionName.text() == name)
            return function->memid;
    }
    return DISPID_UNKNOWN;
}

}  // namespace

GoldMineIdentifiers ReadGoldMineTypeLibrary() {
    const ComPtr<ITypeLib> library = LoadLibrary();
    GoldMineIdentifiers found;
    ComPtr<ITypeInfo> events;
    bool hasClass = false;
    for (UINT index = 0; index < library->GetTypeInfoCount() && !hasClass; ++index) {
        ComPtr<ITypeInfo> type;
        ThrowIfFailed(library->GetTypeInfo(index, type.GetAddressOf()));
        hasClass = ReadClass(*type.Get(), found, events);
    }
    if (!hasClass)
        NotRegistered();

    ComPtr<ITypeInfo> commands;
    ThrowIfFailed(library->GetTypeInfoOfGuid(goldMineInterface, commands.GetAddressOf()));
    found.commandMethod = FirstMethod(*commands.Get());
    if (events) {
        const auto attributes = AttributesOf(*events.Get());
        found.eventInterface = attributes->guid;
        found.windowUpDown = MethodByName(*events.Get(), L"WindowUpDown");
    }
    return found;
}

}  // namespace corvane
