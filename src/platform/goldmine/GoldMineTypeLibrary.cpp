#include "platform/goldmine/GoldMineTypeLibrary.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

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
    std::array<wchar_t, 1024> buffer{};
    auto bytes = static_cast<DWORD>((buffer.size() - 1) * sizeof(wchar_t));
    DWORD type = 0;
    if (RegQueryValueExW(key.get(), value, nullptr, &type, reinterpret_cast<BYTE*>(buffer.data()),
                         &bytes) != ERROR_SUCCESS ||
        type != REG_SZ) {
        return {};
    }
    return buffer.data();
}

std::vector<std::wstring> ClassesSubkeys(const std::wstring& path, DWORD view) {
    std::vector<std::wstring> names;
    UniqueRegistryKey key;
    if (RegOpenKeyExW(HKEY_CLASSES_ROOT, path.c_str(), 0, KEY_ENUMERATE_SUB_KEYS | view,
                      key.put()) != ERROR_SUCCESS) {
        return names;
    }
    std::array<wchar_t, 256> name{};  // the longest that there can be
    for (DWORD index = 0;; ++index) {
        auto length = static_cast<DWORD>(name.size());
        if (RegEnumKeyExW(key.get(), index, name.data(), &length, nullptr, nullptr, nullptr,
                          nullptr) != ERROR_SUCCESS) {
            return names;
        }
        names.emplace_back(name.data(), length);
    }
}

std::optional<DWORD> FromHex(const std::wstring& text) {
    wchar_t* end = nullptr;
    const unsigned long number = std::wcstoul(text.c_str(), &end, 16);
    if (end == text.c_str() || *end != L'\0')
        return std::nullopt;
    return number;
}

struct LibraryVersion {
    WORD majorNumber = 0;
    WORD minorNumber = 0;
    bool operator==(const LibraryVersion&) const = default;
};

// "2.a" is version 2.10: both numbers are hexadecimal.
std::optional<LibraryVersion> VersionFromText(const std::wstring& text) {
    const auto point = text.find(L'.');
    const auto major = FromHex(text.substr(0, point));
    const auto minor = point == std::wstring::npos ? 0 : FromHex(text.substr(point + 1));
    if (!major || !minor)
        return std::nullopt;
    return LibraryVersion{static_cast<WORD>(*major), static_cast<WORD>(*minor)};
}

struct RegisteredVersion {
    bool isStated = false;  // by the interface
    LibraryVersion version;
    std::wstring path;
};

// The registered versions of a library; the stated one first, then the highest.
std::vector<RegisteredVersion> RegisteredVersions(const std::wstring& libraryId,
                                                  const std::wstring& stated, DWORD view) {
    const std::wstring library = Join(L"TypeLib\\", libraryId);
    const std::optional<LibraryVersion> statedVersion = VersionFromText(stated);
    std::vector<RegisteredVersion> versions;
    for (const std::wstring& name : ClassesSubkeys(library, view)) {
        if (const auto version = VersionFromText(name))
            versions.push_back({version == statedVersion, *version, Join(library, L"\\", name)});
    }
    std::ranges::sort(versions, std::ranges::greater(), [](const RegisteredVersion& each) {
        return std::tuple(each.isStated, each.version.majorNumber, each.version.minorNumber);
    });
    return versions;
}

// Whether a full path names a file that begins as one with a type library does. All else would be
// taken for the display name of an object, which Windows would make in this process to ask it.
bool IsLibraryFile(const std::wstring& path) {
    if (!path.starts_with(L"\\\\") && path.find(L":\\") != 1)
        return false;
    const UniqueHandle file(CreateFileW(path.c_str(), GENERIC_READ,
                                        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                        nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    std::array<char, 4> begin{};
    DWORD length = 0;
    if (!file || !ReadFile(file.get(), begin.data(), begin.size(), &length, nullptr))
        return false;
    const std::string_view text(begin.data(), length);
    return text.starts_with("MZ") || text == "MSFT" || text == "SLTG";
}

// A program may hold several libraries; then a number stands behind its path.
std::wstring WithoutResourceNumber(const std::wstring& path) {
    const auto backslash = path.find_last_of(L'\\');
    const bool isNumber =
        backslash != std::wstring::npos && backslash + 1 < path.size() &&
        path.find_first_not_of(L"0123456789", backslash + 1) == std::wstring::npos;
    return isNumber ? path.substr(0, backslash) : path;
}

ComPtr<ITypeLib> LoadFile(const std::wstring& path) {
    ComPtr<ITypeLib> loaded;
    if ((IsLibraryFile(path) || IsLibraryFile(WithoutResourceNumber(path))) &&
        SUCCEEDED(LoadTypeLibEx(path.c_str(), REGKIND_NONE, loaded.GetAddressOf()))) {
        ComPtr<ITypeInfo> commands;
        if (FAILED(loaded->GetTypeInfoOfGuid(goldMineInterface, commands.GetAddressOf())))
            loaded.Reset();
    }
    return loaded;
}

// In one of the languages that it is registered in; the neutral one has the lowest number. For
// each, the file for programs of this word length comes first.
ComPtr<ITypeLib> LoadVersion(const RegisteredVersion& registered, DWORD view) {
    struct Language {
        DWORD number;
        std::wstring path;
    };
    std::vector<Language> languages;
    for (const std::wstring& name : ClassesSubkeys(registered.path, view)) {
        if (const auto number = FromHex(name))
            languages.push_back({*number, Join(registered.path, L"\\", name, L"\\")});
    }
    std::ranges::sort(languages, {}, &Language::number);
    constexpr bool is64 = sizeof(void*) == 8;
    for (const Language& language : languages) {
        for (const wchar_t* platform : {is64 ? L"win64" : L"win32", is64 ? L"win32" : L"win64"}) {
            const std::wstring file = ClassesText(language.path + platform, nullptr, view);
            if (ComPtr<ITypeLib> loaded = LoadFile(file))
                return loaded;
        }
    }
    return nullptr;
}

ComPtr<ITypeLib> LoadGoldMineLibrary() {
    const std::wstring path = Join(L"Interface\\", TextOfGuid(goldMineInterface), L"\\TypeLib");
    // Own view first: then the one of programs of the other word length.
    for (const DWORD view : {DWORD{0}, DWORD{KEY_WOW64_32KEY}, DWORD{KEY_WOW64_64KEY}}) {
        const std::wstring id = ClassesText(path, nullptr, view);
        if (id.empty())
            continue;
        const std::wstring stated = ClassesText(path, L"Version", view);
        for (const RegisteredVersion& registered : RegisteredVersions(id, stated, view)) {
            if (ComPtr<ITypeLib> loaded = LoadVersion(registered, view))
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

auto FunctionAt(ITypeInfo& type, UINT index) {
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
        const auto function = FunctionAt(type, index);
        if (function->invkind != INVOKE_FUNC || IsDispatchMethod(function->memid))
            continue;
        return function->memid;
    }
    NotRegistered();
}

DISPID MethodByName(ITypeInfo& type, std::wstring_view name) {
    const auto attributes = AttributesOf(type);
    for (UINT index = 0; index < attributes->cFuncs; ++index) {
        const auto function = FunctionAt(type, index);
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
    return ReadGoldMineTypeLibrary(*LoadGoldMineLibrary().Get());
}

GoldMineIdentifiers ReadGoldMineTypeLibrary(ITypeLib& library) {
    GoldMineIdentifiers found;
    ComPtr<ITypeInfo> events;
    bool hasClass = false;
    for (UINT index = 0; index < library.GetTypeInfoCount() && !hasClass; ++index) {
        ComPtr<ITypeInfo> type;
        try {
            ThrowIfFailed(library.GetTypeInfo(index, type.GetAddressOf()));
            hasClass = ReadClass(*type.Get(), found, events);
        } catch (const RuntimeError&) {
            continue;  // another class may refer to a library that is not there
        }
    }
    if (!hasClass)
        NotRegistered();

    ComPtr<ITypeInfo> commands;
    ThrowIfFailed(library.GetTypeInfoOfGuid(goldMineInterface, commands.GetAddressOf()));
    found.commandMethod = FirstMethod(*commands.Get());
    if (events) {
        const auto attributes = AttributesOf(*events.Get());
        found.eventInterface = attributes->guid;
        found.windowUpDown = MethodByName(*events.Get(), L"WindowUpDown");
    }
    return found;
}

}  // namespace corvane
