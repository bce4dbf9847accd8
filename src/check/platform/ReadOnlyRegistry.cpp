#include "check/platform/ReadOnlyRegistry.h"

#include <string_view>

#include "platform/kit/AnsiText.h"
#include "platform/kit/Windows.h"
#include "util/RuntimeError.h"

namespace corvane {

namespace {

constexpr bool is64Bit = sizeof(void*) == 8;

[[noreturn]] void Refuse(std::wstring_view call) {
    RuntimeError error;
    error.number = registryErrorNumber;
    error.description = std::wstring(call) + L": the registry is only read here";
    throw error;
}

}  // namespace

ReadOnlyRegistry::ReadOnlyRegistry(View view)
    : view_(view == View::Own ? 0 : (is64Bit ? KEY_WOW64_32KEY : KEY_WOW64_64KEY)) {}

RegistryStatus ReadOnlyRegistry::CreateKey(RegistryHandle root, const std::wstring& subKey,
                                           std::uint32_t, const std::wstring&,
                                           std::uint32_t options, std::uint32_t,
                                           RegistryHandle& key, std::uint32_t& disposition) {
    disposition = REG_OPENED_EXISTING_KEY;
    HKEY opened = nullptr;
    const auto nativeRoot = reinterpret_cast<HKEY>(static_cast<LONG_PTR>(root));
    const LSTATUS status = RegOpenKeyExA(nativeRoot, AnsiFromText(subKey).c_str(), options,
                                         RegistryAccess::read | view_, &opened);
    if (opened)
        RegCloseKey(opened);
    if (status == ERROR_FILE_NOT_FOUND && root != RegistryRoot::none) {
        key = RegistryRoot::none;
        return ERROR_SUCCESS;
    }
    return Openkey(root, subKey, options, RegistryAccess::read, key);
}

RegistryStatus ReadOnlyRegistry::Closekey(RegistryHandle key) {
    return key == RegistryRoot::none ? ERROR_SUCCESS : registry_.Closekey(key);
}

RegistryStatus ReadOnlyRegistry::DeleteKey(RegistryHandle, const std::wstring&) {
    Refuse(L"RegDeleteKey");
}

RegistryStatus ReadOnlyRegistry::DeleteValue(RegistryHandle, const std::wstring&) {
    Refuse(L"RegDeleteValue");
}

RegistryStatus ReadOnlyRegistry::Openkey(RegistryHandle root, const std::wstring& subKey,
                                         std::uint32_t options, std::uint32_t,
                                         RegistryHandle& key) {
    return registry_.Openkey(root, subKey, options, RegistryAccess::read | view_, key);
}

RegistryStatus ReadOnlyRegistry::QueryValue(RegistryHandle key, const std::wstring& valueName,
                                            std::uint32_t reserved, std::uint32_t& type,
                                            std::wstring& data, std::uint32_t& size) {
    return registry_.QueryValue(key, valueName, reserved, type, data, size);
}

RegistryStatus ReadOnlyRegistry::SetValue(RegistryHandle, const std::wstring&, std::uint32_t,
                                          std::uint32_t, const std::wstring&, std::uint32_t) {
    Refuse(L"RegSetValueEx");
}

}  // namespace corvane
