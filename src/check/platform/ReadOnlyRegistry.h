#pragma once

#include <string>

#include "platform/cRegistry.h"

namespace corvane {

// The registry as it is, in the view of programs of 32 or of 64 bits: a key that is missing has no
// values, and is not made. What would change something raises the registry error.
class ReadOnlyRegistry final : public Registry {
public:
    enum class View { Own, OtherWordLength };

    explicit ReadOnlyRegistry(View view);

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
    cRegistry registry_;
    std::uint32_t view_;
};

}  // namespace corvane
