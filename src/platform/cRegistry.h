#pragma once

#include <string>

#include "seams/Registry.h"

namespace corvane {

// The Windows registry through its ANSI functions. Holds no state; the caller owns and closes
// every handle that CreateKey or Openkey gave it.
class cRegistry final : public Registry {
public:
    RegistryStatus CreateKey(RegistryHandle root, const std::wstring& subKey,
                             std::uint32_t reserved, const std::wstring& classText,
                             std::uint32_t options, std::uint32_t access, RegistryHandle& key,
                             std::uint32_t& disposition) override;
    RegistryStatus Closekey(RegistryHandle key) override;
    RegistryStatus DeleteKey(RegistryHandle key, const std::wstring& subKey) override;
    RegistryStatus DeleteValue(RegistryHandle key, const std::wstring& valueName) override;
    RegistryStatus Openkey(RegistryHandle root, const std::wstring& subKey, std::uint32_t options,
                           std::uint32_t access, RegistryHandle& key) override;
    RegistryStatus QueryValue(RegistryHandle key, const std::wstring& valueName,
                              std::uint32_t reserved, std::uint32_t& type, std::wstring& data,
                              std::uint32_t& size) override;
    RegistryStatus SetValue(RegistryHandle key, const std::wstring& valueName,
                            std::uint32_t reserved, std::uint32_t type, const std::wstring& data,
                            std::uint32_t size) override;

private:
    [[noreturn]] static void RaiseRegistryError(const std::wstring& context, RegistryStatus status);
    static std::wstring SystemErrorText(RegistryStatus status);
};

}  // namespace corvane
