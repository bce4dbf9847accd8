#pragma once

#include <cstdint>
#include <string>

namespace corvane {

// Key handles are 32-bit: the predefined ones by definition, opened ones because Windows keeps
// only 32 significant bits in a handle.
using RegistryHandle = std::int32_t;
using RegistryStatus = std::int32_t;

namespace RegistryRoot {
inline constexpr RegistryHandle none = 0;
inline constexpr RegistryHandle classesRoot = static_cast<RegistryHandle>(0x80000000);
inline constexpr RegistryHandle currentUser = static_cast<RegistryHandle>(0x80000001);
inline constexpr RegistryHandle localMachine = static_cast<RegistryHandle>(0x80000002);
inline constexpr RegistryHandle users = static_cast<RegistryHandle>(0x80000003);
}  // namespace RegistryRoot

// Key-specific bits only, without the platform's standard-rights bits. An error's text names them
// all.
namespace RegistryAccess {
inline constexpr std::uint32_t queryValue = 1;
inline constexpr std::uint32_t setValue = 2;
inline constexpr std::uint32_t createSubKey = 4;
inline constexpr std::uint32_t write = 6;
inline constexpr std::uint32_t enumerateSubKeys = 8;
inline constexpr std::uint32_t notify = 16;
inline constexpr std::uint32_t read = 25;
inline constexpr std::uint32_t createLink = 32;
inline constexpr std::uint32_t allAccess = 63;
}  // namespace RegistryAccess

inline constexpr std::uint32_t registryText = 1;  // REG_SZ

// The number of the one error that every failing registry operation raises: the base of object
// errors plus 30001.
inline constexpr std::int32_t registryErrorNumber = -2147191503;

// Each operation makes one call of the Windows registry and returns its status; a failure raises
// the registry error, whose text says which call failed, on what, and what the system says. The set
// is whole: the program deletes nothing and opens its keys by creating them.
class Registry {
public:
    virtual ~Registry() = default;

    virtual RegistryStatus CreateKey(RegistryHandle root, const std::wstring& subKey,
                                     std::uint32_t reserved, const std::wstring& classText,
                                     std::uint32_t options, std::uint32_t access,
                                     RegistryHandle& key, std::uint32_t& disposition) = 0;
    virtual RegistryStatus Closekey(RegistryHandle key) = 0;
    virtual RegistryStatus DeleteKey(RegistryHandle key, const std::wstring& subKey) = 0;
    virtual RegistryStatus DeleteValue(RegistryHandle key, const std::wstring& valueName) = 0;
    virtual RegistryStatus Openkey(RegistryHandle root, const std::wstring& subKey,
                                   std::uint32_t options, std::uint32_t access,
                                   RegistryHandle& key) = 0;
    // The data text is the buffer: its ANSI form is filled. A buffer that is too small is no
    // failure, so that a caller can probe for the size in bytes. Always 0.
    virtual RegistryStatus QueryValue(RegistryHandle key, const std::wstring& valueName,
                                      std::uint32_t reserved, std::uint32_t& type,
                                      std::wstring& data, std::uint32_t& size) = 0;
    virtual RegistryStatus SetValue(RegistryHandle key, const std::wstring& valueName,
                                    std::uint32_t reserved, std::uint32_t type,
                                    const std::wstring& data, std::uint32_t size) = 0;
};

}  // namespace corvane
