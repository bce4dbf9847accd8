#include "platform/cRegistry.h"

#include <array>
#include <utility>

#include "platform/kit/AnsiText.h"
#include "platform/kit/Windows.h"
#include "util/RuntimeError.h"
#include "util/Text.h"

namespace corvane {

namespace {

// Sign extension is what the platform does itself between 32-bit and 64-bit handles.
HKEY NativeKey(RegistryHandle handle) {
    return reinterpret_cast<HKEY>(static_cast<LONG_PTR>(handle));
}

RegistryHandle HandleOf(HKEY key) {
    return static_cast<RegistryHandle>(reinterpret_cast<LONG_PTR>(key));
}

// For messages; empty for another key than these.
std::wstring RootKeyName(RegistryHandle handle) {
    using Named = std::pair<RegistryHandle, const wchar_t*>;
    for (const auto& [root, name] : {Named{RegistryRoot::classesRoot, L"HKEY_CLASSES_ROOT\\"},
                                     Named{RegistryRoot::currentUser, L"HKEY_CURRENT_USER\\"},
                                     Named{RegistryRoot::localMachine, L"HKEY_LOCAL_MACHINE\\"},
                                     Named{RegistryRoot::users, L"HKEY_USERS\\"}}) {
        if (root == handle)
            return name;
    }
    return {};
}

// For messages; empty for another mask than these.
std::wstring AccessName(std::uint32_t mask) {
    using Named = std::pair<std::uint32_t, const wchar_t*>;
    for (const auto& [access, name] :
         {Named{RegistryAccess::queryValue, L"QUERY_VALUE"},
          Named{RegistryAccess::setValue, L"SET_VALUE"},
          Named{RegistryAccess::createSubKey, L"CREATE_SUB_KEY"},
          Named{RegistryAccess::write, L"WRITE"},
          Named{RegistryAccess::enumerateSubKeys, L"ENUMERATE_SUB_KEYS"},
          Named{RegistryAccess::notify, L"NOTIFY"}, Named{RegistryAccess::read, L"READ"},
          Named{RegistryAccess::createLink, L"CREATE_LINK"},
          Named{RegistryAccess::allAccess, L"ALL_ACCESS"}}) {
        if (access == mask)
            return name;
    }
    return {};
}

}  // namespace

RegistryStatus cRegistry::CreateKey(RegistryHandle root, const std::wstring& subKey,
                                    std::uint32_t reserved, const std::wstring& classText,
                                    std::uint32_t options, std::uint32_t access,
                                    RegistryHandle& key, std::uint32_t& disposition) {
    HKEY created = nullptr;
    DWORD how = 0;
    std::string ansiClass = AnsiFromText(classText);
    const RegistryStatus status =
        RegCreateKeyExA(NativeKey(root), AnsiFromText(subKey).c_str(), reserved, ansiClass.data(),
                        options, access, nullptr, &created, &how);
    if (status != ERROR_SUCCESS) {
        RaiseRegistryError(Join(L"RegCreateKeyEx requesting ", AccessName(access), L" access to '",
                                RootKeyName(root), subKey, L"'"),
                           status);
    }
    key = HandleOf(created);
    disposition = how;
    return status;
}

RegistryStatus cRegistry::Closekey(RegistryHandle key) {
    const RegistryStatus status = RegCloseKey(NativeKey(key));
    if (status != ERROR_SUCCESS)
        RaiseRegistryError(L"RegCloseKey", status);
    return status;
}

RegistryStatus cRegistry::DeleteKey(RegistryHandle key, const std::wstring& subKey) {
    const RegistryStatus status = RegDeleteKeyA(NativeKey(key), AnsiFromText(subKey).c_str());
    if (status != ERROR_SUCCESS)
        RaiseRegistryError(Join(L"RegDeleteKey of subkey '", subKey, L"'"), status);
    return status;
}

RegistryStatus cRegistry::DeleteValue(RegistryHandle key, const std::wstring& valueName) {
    const RegistryStatus status = RegDeleteValueA(NativeKey(key), AnsiFromText(valueName).c_str());
    if (status != ERROR_SUCCESS)
        RaiseRegistryError(Join(L"RegDeleteValue of ValueName '", valueName, L"'"), status);
    return status;
}

RegistryStatus cRegistry::Openkey(RegistryHandle root, const std::wstring& subKey,
                                  std::uint32_t options, std::uint32_t access,
                                  RegistryHandle& key) {
    HKEY opened = nullptr;
    const RegistryStatus status =
        RegOpenKeyExA(NativeKey(root), AnsiFromText(subKey).c_str(), options, access, &opened);
    if (status != ERROR_SUCCESS) {
        RaiseRegistryError(Join(L"RegOpenKeyEx requesting ", AccessName(access), L" access to '",
                                RootKeyName(root), subKey, L"'"),
                           status);
    }
    key = HandleOf(opened);
    return status;
}

RegistryStatus cRegistry::QueryValue(RegistryHandle key, const std::wstring& valueName,
                                     std::uint32_t reserved, std::uint32_t& type,
                                     std::wstring& data, std::uint32_t& size) {
    std::string buffer = AnsiFromText(data);
    // The caller's size says how much may be filled, never more than the buffer holds.
    const auto capacity = static_cast<DWORD>(buffer.size());
    DWORD bytes = size < capacity ? size : capacity;
    DWORD kind = type;
    DWORD reservedWord = reserved;
    const RegistryStatus status = RegQueryValueExA(NativeKey(key), AnsiFromText(valueName).c_str(),
                                                   reserved ? &reservedWord : nullptr, &kind,
                                                   reinterpret_cast<BYTE*>(buffer.data()), &bytes);
    if (status != ERROR_SUCCESS && status != ERROR_MORE_DATA)
        RaiseRegistryError(Join(L"RegQueryValueEx of ValueName '", valueName, L"'"), status);
    type = kind;
    size = bytes;
    data = TextFromAnsi(buffer);
    return ERROR_SUCCESS;
}

RegistryStatus cRegistry::SetValue(RegistryHandle key, const std::wstring& valueName,
                                   std::uint32_t reserved, std::uint32_t type,
                                   const std::wstring& data, std::uint32_t size) {
    std::string bytes = AnsiFromText(data);
    // Who gives the whole text means all of its bytes: a double-byte code page makes more of them
    // than there are characters.
    if (size == data.size())
        size = static_cast<std::uint32_t>(bytes.size());
    if (bytes.size() < size)
        bytes.resize(size, '\0');
    const RegistryStatus status =
        RegSetValueExA(NativeKey(key), AnsiFromText(valueName).c_str(), reserved, type,
                       reinterpret_cast<const BYTE*>(bytes.data()), size);
    if (status != ERROR_SUCCESS) {
        RaiseRegistryError(
            Join(L"RegSetValueEx of ValueName '", valueName, L"' to value '", data, L"'"), status);
    }
    return status;
}

void cRegistry::RaiseRegistryError(const std::wstring& context, RegistryStatus status) {
    RuntimeError error;
    error.number = registryErrorNumber;
    // Support tools look for this spelling.
    error.source = L"CorvanneTo3CX";
    error.description = Join(context, lineBreak, SystemErrorText(status));
    throw error;
}

std::wstring cRegistry::SystemErrorText(RegistryStatus status) {
    std::wstring message;
    if (status != 0) {
        std::array<char, 1000> buffer;
        buffer.fill(' ');
        const DWORD length =
            FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM, nullptr, static_cast<DWORD>(status), 0,
                           buffer.data(), static_cast<DWORD>(buffer.size()), nullptr);
        if (length > 0) {
            message = TextFromAnsi({buffer.data(), length});
        } else {
            // The number keeps its sign position, so a positive one shows two blanks.
            message = L"System error code: ";
            if (status > 0)
                message += L' ';
            message += std::to_wstring(status);
        }
    }
    return Join(L"System error ", std::to_wstring(status), L": ", message);
}

}  // namespace corvane
