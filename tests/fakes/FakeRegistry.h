#pragma once

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "seams/Registry.h"
#include "util/RuntimeError.h"

namespace corvane::test {

// A registry in memory; keys are named "HKCU\path" and so on. Behaves as the real one towards
// cSimuIniFile: sizes count the stored terminator.
class FakeRegistry final : public Registry {
public:
    using Values = std::map<std::wstring, std::wstring>;

    RegistryStatus CreateKey(RegistryHandle root, const std::wstring& subKey, std::uint32_t,
                             const std::wstring&, std::uint32_t, std::uint32_t access,
                             RegistryHandle& key, std::uint32_t& disposition) override {
        const std::wstring path = Path(root, subKey);
        if (root == RegistryRoot::none || failingKeys.contains(path) ||
            (access == RegistryAccess::write && readOnlyKeys.contains(path))) {
            Fail(L"RegCreateKeyEx of " + path);
        }
        disposition = keys.contains(path) ? 2 : 1;
        keys[path];
        open_.push_back(path);
        key = static_cast<RegistryHandle>(open_.size());
        ++openHandles;
        return 0;
    }
    RegistryStatus Closekey(RegistryHandle) override {
        if (closingFails)
            Fail(L"RegCloseKey");
        --openHandles;
        return 0;
    }
    RegistryStatus DeleteKey(RegistryHandle key, const std::wstring& subKey) override {
        keys.erase(PathOf(key) + L"\\" + subKey);
        return 0;
    }
    RegistryStatus DeleteValue(RegistryHandle key, const std::wstring& valueName) override {
        keys[PathOf(key)].erase(valueName);
        return 0;
    }
    RegistryStatus Openkey(RegistryHandle root, const std::wstring& subKey, std::uint32_t,
                           std::uint32_t, RegistryHandle& key) override {
        const std::wstring path = Path(root, subKey);
        if (!keys.contains(path))
            Fail(L"RegOpenKeyEx of " + path);
        open_.push_back(path);
        key = static_cast<RegistryHandle>(open_.size());
        ++openHandles;
        return 0;
    }
    RegistryStatus QueryValue(RegistryHandle key, const std::wstring& valueName, std::uint32_t,
                              std::uint32_t& type, std::wstring& data,
                              std::uint32_t& size) override {
        const Values& values = keys[PathOf(key)];
        const auto value = values.find(valueName);
        if (value == values.end())
            Fail(L"RegQueryValueEx of ValueName '" + valueName + L"'");
        if (size > 0 && unreadableValues.contains(valueName))
            Fail(L"RegQueryValueEx of ValueName '" + valueName + L"'");
        type = registryText;
        const std::wstring& stored = value->second;
        if (size >= stored.size())
            data.replace(0, stored.size(), stored);
        size = static_cast<std::uint32_t>(stored.size());
        return 0;
    }
    RegistryStatus SetValue(RegistryHandle key, const std::wstring& valueName, std::uint32_t,
                            std::uint32_t, const std::wstring& data, std::uint32_t size) override {
        if (failingValues.contains(valueName))
            Fail(L"RegSetValueEx of ValueName '" + valueName + L"'");
        const std::wstring text = data.substr(0, size);
        keys[PathOf(key)][valueName] = codePage ? codePage(text) : text;
        writes.push_back(valueName);
        return 0;
    }

    // The raw stored data, terminator included.
    void StoreRaw(const std::wstring& path, const std::wstring& name, const std::wstring& data) {
        keys[path][name] = data;
    }
    void Store(const std::wstring& path, const std::wstring& name, const std::wstring& text) {
        StoreRaw(path, name, text + L'\0');
    }
    // A stored text without its terminator; nothing when there is no such value.
    [[nodiscard]] std::optional<std::wstring> Stored(const std::wstring& path,
                                                     const std::wstring& name) const {
        const auto key = keys.find(path);
        if (key == keys.end())
            return std::nullopt;
        const auto value = key->second.find(name);
        if (value == key->second.end())
            return std::nullopt;
        return value->second.substr(0, value->second.find(L'\0'));
    }

    static inline const std::wstring ownKey = L"HKCU\\SOFTWARE\\Halvorn Systems\\CorvaneTo3CX";

    std::map<std::wstring, Values> keys;
    std::set<std::wstring> failingKeys;       // cannot be opened at all
    std::set<std::wstring> readOnlyKeys;      // cannot be opened for writing
    std::set<std::wstring> failingValues;     // cannot be written
    std::set<std::wstring> unreadableValues;  // tell their size and no more
    bool closingFails = false;
    std::function<std::wstring(const std::wstring&)> codePage;  // what is kept of a text
    std::vector<std::wstring> writes;  // names of the values written, in order
    int openHandles = 0;

private:
    [[noreturn]] static void Fail(const std::wstring& context) {
        RuntimeError error;
        error.number = registryErrorNumber;
        error.source = L"CorvanneTo3CX";
        error.description = context + L"\r\nSystem error 5: Access denied.\r\n";
        throw error;
    }
    static std::wstring Path(RegistryHandle root, const std::wstring& subKey) {
        switch (root) {
            case RegistryRoot::currentUser:
                return L"HKCU\\" + subKey;
            case RegistryRoot::localMachine:
                return L"HKLM\\" + subKey;
            case RegistryRoot::classesRoot:
                return L"HKCR\\" + subKey;
            default:
                return subKey;
        }
    }
    [[nodiscard]] const std::wstring& PathOf(RegistryHandle key) const {
        return open_.at(static_cast<std::size_t>(key - 1));
    }

    std::vector<std::wstring> open_;
};

}  // namespace corvane::test
