#pragma once

#include <cstdint>
#include <string>

#include "seams/Registry.h"

namespace corvane {

// A registry key that looks like one section of an INI file: set Scope, Subkey and RootSpec once,
// then read and write named texts. Each access opens and closes its key. Registry failures raise
// the registry error. The program's own entries are texts of the first two scopes; typed entries
// and the third make the helper whole.
class cSimuIniFile {
public:
    explicit cSimuIniFile(Registry& registry) : registry_(registry) {}

    // 1 = HKEY_CURRENT_USER, 2 = HKEY_LOCAL_MACHINE, 3 = HKEY_CLASSES_ROOT; with any other value
    // every access fails.
    std::int32_t Scope = 0;
    std::wstring Subkey;    // first part of the key path
    std::wstring RootSpec;  // last part of the key path

    bool ReadProfileBoolean(const std::wstring& key, bool defaultValue);
    // The typed writers return the previous value; an entry that did not exist raises error 13
    // after the value has been written.
    bool WriteProfileBoolean(const std::wstring& key, bool value);
    double WriteProfileFloat(const std::wstring& key, double value);
    std::int16_t WriteProfileInteger(const std::wstring& key, std::int16_t value);
    // Returns the text that the entry held before, empty if none.
    std::wstring WriteProfileString(const std::wstring& key, const std::wstring& value);
    double ReadProfileFloat(const std::wstring& key, double defaultValue);
    std::int16_t ReadProfileInteger(const std::wstring& key, std::int16_t defaultValue);
    // Creates the key path when it does not exist, so that a first run leaves an empty key.
    std::wstring ReadProfileString(const std::wstring& key, const std::wstring& defaultText);

private:
    [[nodiscard]] RegistryHandle RootHandle() const;

    Registry& registry_;
};

// The program's own settings key, HKEY_CURRENT_USER\SOFTWARE\Halvorn Systems\CorvaneTo3CX.
[[nodiscard]] cSimuIniFile OwnSettingsStore(Registry& registry);

}  // namespace corvane
