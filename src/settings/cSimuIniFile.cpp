#include "settings/cSimuIniFile.h"

#include <utility>

#include "seams/Conversions.h"
#include "util/RuntimeError.h"
#include "util/Text.h"

namespace corvane {

namespace {

// A key that was opened or created, closed at the end of its access.
class OpenKey {
public:
    OpenKey(Registry& registry, RegistryHandle root, const std::wstring& path, std::uint32_t access)
        : registry_(registry) {
        std::uint32_t disposition = 0;
        registry_.CreateKey(root, path, 0, L"", 0, access, key_, disposition);
    }
    ~OpenKey() {
        if (key_ == RegistryRoot::none)
            return;
        try {
            Close();
        } catch (...) {
            // Another error is on its way and says more.
        }
    }
    OpenKey(const OpenKey&) = delete;
    OpenKey& operator=(const OpenKey&) = delete;

    [[nodiscard]] RegistryHandle get() const { return key_; }
    void Close() { registry_.Closekey(std::exchange(key_, RegistryRoot::none)); }

private:
    Registry& registry_;
    RegistryHandle key_ = RegistryRoot::none;
};

}  // namespace

bool cSimuIniFile::ReadProfileBoolean(const std::wstring& key, bool defaultValue) {
    return BooleanFromText(ReadProfileString(key, std::wstring(TextFromBoolean(defaultValue))));
}

bool cSimuIniFile::WriteProfileBoolean(const std::wstring& key, bool value) {
    return BooleanFromText(WriteProfileString(key, std::wstring(TextFromBoolean(value))));
}

double cSimuIniFile::WriteProfileFloat(const std::wstring& key, double value) {
    return DoubleFromText(WriteProfileString(key, TextFromDouble(value)));
}

std::int16_t cSimuIniFile::WriteProfileInteger(const std::wstring& key, std::int16_t value) {
    return IntegerFromText(WriteProfileString(key, std::to_wstring(value)));
}

double cSimuIniFile::ReadProfileFloat(const std::wstring& key, double defaultValue) {
    return DoubleFromText(ReadProfileString(key, TextFromDouble(defaultValue)));
}

std::int16_t cSimuIniFile::ReadProfileInteger(const std::wstring& key, std::int16_t defaultValue) {
    return IntegerFromText(ReadProfileString(key, std::to_wstring(defaultValue)));
}

std::wstring cSimuIniFile::ReadProfileString(const std::wstring& key,
                                             const std::wstring& defaultText) {
    OpenKey opened(registry_, RootHandle(), Join(Subkey, L"\\", RootSpec), RegistryAccess::read);
    std::uint32_t type = registryText;
    std::wstring data = L"0";
    std::uint32_t size = 0;
    try {
        registry_.QueryValue(opened.get(), key, 0, type, data, size);
    } catch (const RuntimeError&) {
        size = 0;  // a missing entry is not a failure: its default counts
    }
    std::wstring result = defaultText;
    if (size > 0) {
        type = registryText;
        data.assign(size + 1, L' ');
        registry_.QueryValue(opened.get(), key, 0, type, data, size);
        // The last blank of the buffer lies behind the value; a stored terminator is no text.
        if (!data.empty())
            data.pop_back();
        if (!data.empty() && data.back() == L'\0')
            data.pop_back();
        result = data;
    }
    opened.Close();
    return result;
}

std::wstring cSimuIniFile::WriteProfileString(const std::wstring& key, const std::wstring& value) {
    std::wstring previous;
    try {
        previous = ReadProfileString(key, L"");
    } catch (const RuntimeError&) {
        previous.clear();  // the write below reports what is wrong with the key
    }
    OpenKey opened(registry_, RootHandle(), Join(Subkey, L"\\", RootSpec), RegistryAccess::write);
    std::wstring data = value;
    data += L'\0';
    registry_.SetValue(opened.get(), key, 0, registryText, data,
                       static_cast<std::uint32_t>(data.size()));
    opened.Close();
    return previous;
}

RegistryHandle cSimuIniFile::RootHandle() const {
    switch (Scope) {
        case 1:
            return RegistryRoot::currentUser;
        case 2:
            return RegistryRoot::localMachine;
        case 3:
            return RegistryRoot::classesRoot;
        default:
            return RegistryRoot::none;
    }
}

cSimuIniFile OwnSettingsStore(Registry& registry) {
    cSimuIniFile store(registry);
    store.Scope = 1;
    store.Subkey = L"SOFTWARE\\Halvorn Systems";
    store.RootSpec = L"CorvaneTo3CX";
    return store;
}

}  // namespace corvane
