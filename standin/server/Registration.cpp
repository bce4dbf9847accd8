#include "server/Registration.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "server/TypeLibrary.h"
#include "shared/Options.h"

namespace practice {
namespace {

constexpr wchar_t ownName[] = L"Practice GoldMine";
constexpr wchar_t ownClass[] = L"Practice GoldMine user interface";

std::wstring TextOfGuid(const GUID& id) {
    wchar_t text[39];
    const int length = StringFromGUID2(id, text, static_cast<int>(std::size(text)));
    return {text, static_cast<std::size_t>(length - 1)};
}

std::wstring VersionOf(const TypeLibrary& types) {
    wchar_t text[12];
    const int length =
        swprintf(text, std::size(text), L"%x.%x", types.majorVersion, types.minorVersion);
    return {text, static_cast<std::size_t>(length)};
}

std::wstring InterfaceKey(const IID& id) {
    return L"Interface\\" + TextOfGuid(id);
}

// A place of classes: the path ends in a backslash.
struct Classes {
    HKEY root;
    std::wstring path;
};

// The user's own. Wine's COM looks at the machine's only, so there they go as well.
std::vector<Classes> Places() {
    std::vector<Classes> places = {{HKEY_CURRENT_USER, L"Software\\Classes\\"}};
    if (GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version"))
        places.push_back({HKEY_LOCAL_MACHINE, L"Software\\Classes\\"});
    return places;
}

// A value, the default one when none is named; empty when it is not there.
std::wstring Text(const Classes& place, const std::wstring& key, REGSAM view = 0,
                  const wchar_t* name = nullptr) {
    wchar_t text[256] = {};
    DWORD size = sizeof text;
    HKEY opened = nullptr;
    if (RegOpenKeyExW(place.root, (place.path + key).c_str(), 0, KEY_QUERY_VALUE | view, &opened) ==
        ERROR_SUCCESS) {
        RegGetValueW(opened, nullptr, name, RRF_RT_REG_SZ, nullptr, text, &size);
        RegCloseKey(opened);
    }
    return text;
}

// Another maker's library under the interface; programs of either word length may have one.
bool BelongsToAnother(const TypeLibrary& types) {
    constexpr std::array<REGSAM, 3> views{0, KEY_WOW64_32KEY, KEY_WOW64_64KEY};
    return std::ranges::any_of(views, [&types](REGSAM view) {
        const Classes all{HKEY_CLASSES_ROOT, {}};
        const std::wstring key = InterfaceKey(userInterfaceId) + L"\\TypeLib";
        const std::wstring library = Text(all, key, view);
        std::wstring libraryKey = L"TypeLib\\" + library;
        libraryKey.append(L"\\").append(Text(all, key, view, L"Version"));
        return !library.empty() && library != TextOfGuid(types.libraryId) &&
               !Text(all, libraryKey, view).starts_with(ownName);
    });
}

struct Entry {
    std::wstring key;
    std::wstring text;
    const wchar_t* name = nullptr;  // of a value that is not the default one
};

std::vector<Entry> EntriesOf(const TypeLibrary& types) {
    constexpr wchar_t automationProxy[] = L"{00020424-0000-0000-C000-000000000046}";
    constexpr wchar_t dispatchProxy[] = L"{00020420-0000-0000-C000-000000000046}";
    constexpr const wchar_t* system = sizeof(void*) == 8 ? L"win64" : L"win32";
    const std::wstring program = ProgramPath();
    const std::wstring classId = TextOfGuid(types.classId);
    const std::wstring classKey = L"CLSID\\" + classId;
    const std::wstring libraryId = TextOfGuid(types.libraryId);
    const std::wstring libraryKey = L"TypeLib\\" + libraryId + L"\\" + VersionOf(types);
    std::vector<Entry> entries = {
        {classKey, ownClass},
        {classKey + L"\\LocalServer32", L"\"" + program + L"\""},
        {classKey + L"\\ProgID", types.programId},
        {classKey + L"\\TypeLib", libraryId},
        {types.programId, ownClass},
        {types.programId + L"\\CLSID", classId},
        {libraryKey, ownName},
        {libraryKey + L"\\0\\" + system, program},
        {libraryKey + L"\\FLAGS", L"0"},
        {libraryKey + L"\\HELPDIR", program.substr(0, program.rfind(L'\\'))},
    };
    for (const auto& [id, proxy] :
         {std::pair(userInterfaceId, automationProxy), std::pair(types.eventsId, dispatchProxy)}) {
        const std::wstring key = InterfaceKey(id);
        entries.insert(entries.end(), {{key, ownName},
                                       {key + L"\\ProxyStubClsid32", proxy},
                                       {key + L"\\TypeLib", libraryId},
                                       {key + L"\\TypeLib", VersionOf(types), L"Version"}});
    }
    return entries;
}

LSTATUS Write(const Classes& place, const Entry& entry) {
    const auto size = static_cast<DWORD>((entry.text.size() + 1) * sizeof(wchar_t));
    return RegSetKeyValueW(place.root, (place.path + entry.key).c_str(), entry.name, REG_SZ,
                           entry.text.c_str(), size);
}

LSTATUS RemoveTree(const Classes& place, const std::wstring& key) {
    const LSTATUS removed = RegDeleteTreeW(place.root, (place.path + key).c_str());
    return removed == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : removed;
}

// A user has no such key before his first class of this kind.
void RemoveWhenEmpty(const Classes& place, const std::wstring& key) {
    DWORD keys = 1;
    DWORD values = 1;
    HKEY opened = nullptr;
    if (RegOpenKeyExW(place.root, (place.path + key).c_str(), 0, KEY_QUERY_VALUE, &opened) ==
        ERROR_SUCCESS) {
        RegQueryInfoKeyW(opened, nullptr, nullptr, nullptr, &keys, nullptr, nullptr, &values,
                         nullptr, nullptr, nullptr, nullptr);
        RegCloseKey(opened);
    }
    if (keys == 0 && values == 0)
        RegDeleteKeyW(place.root, (place.path + key).c_str());
}

}  // namespace

HRESULT RegisterServer() {
    TypeLibrary types;
    if (const HRESULT outcome = ReadTypeLibrary(types); FAILED(outcome))
        return outcome;
    if (BelongsToAnother(types))
        return HRESULT_FROM_WIN32(ERROR_ALREADY_EXISTS);
    for (const Classes& place : Places()) {
        for (const Entry& entry : EntriesOf(types)) {
            if (const LSTATUS written = Write(place, entry); written != ERROR_SUCCESS)
                return HRESULT_FROM_WIN32(static_cast<DWORD>(written));
        }
    }
    return S_OK;
}

HRESULT UnregisterServer() {
    TypeLibrary types;
    if (const HRESULT outcome = ReadTypeLibrary(types); FAILED(outcome))
        return outcome;
    const std::wstring libraryId = TextOfGuid(types.libraryId);
    LSTATUS outcome = ERROR_SUCCESS;
    for (const Classes& place : Places()) {
        std::vector<std::wstring> trees = {L"CLSID\\" + TextOfGuid(types.classId), types.programId,
                                           L"TypeLib\\" + libraryId};
        for (const IID& id : {userInterfaceId, types.eventsId}) {
            if (Text(place, InterfaceKey(id) + L"\\TypeLib") == libraryId)
                trees.push_back(InterfaceKey(id));
        }
        for (const std::wstring& key : trees) {
            if (const LSTATUS removed = RemoveTree(place, key); removed != ERROR_SUCCESS)
                outcome = removed;
        }
        for (const wchar_t* key : {L"CLSID", L"Interface", L"TypeLib"})
            RemoveWhenEmpty(place, key);
    }
    return HRESULT_FROM_WIN32(static_cast<DWORD>(outcome));
}

}  // namespace practice
