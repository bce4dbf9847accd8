// The registry file that the build writes from the control table, as an administrator gives it out:
// imported by Windows' own program, read back by this one.

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "fakes/FakeFormView.h"
#include "fakes/FakeMessageBoxes.h"
#include "fakes/FakeStatusWriter.h"
#include "platform/cRegistry.h"
#include "settings/OptionText.h"
#include "settings/Settings.h"
#include "support/windows/BuiltFiles.h"
#include "support/windows/Files.h"
#include "support/windows/Process.h"
#include "support/windows/TemporaryFolder.h"
#include "ui/form/Form.h"
#include "unit/OptionsTable.h"
#include "util/Text.h"
#include "windows/RegistrySandbox.h"

namespace corvane::test {
namespace {

constexpr const wchar_t* ownKey = L"SOFTWARE\\Halvorn Systems\\CorvaneTo3CX";
using Values = std::map<std::wstring, std::wstring>;

// The real key: the importing program knows no other.
class SettingsFileTest : public testing::Test {
protected:
    SettingsFileTest() { RegDeleteTreeW(HKEY_CURRENT_USER, ownKey); }
    ~SettingsFileTest() override { RegDeleteTreeW(HKEY_CURRENT_USER, ownKey); }

    // The file as text, without its byte order mark.
    static std::wstring FileText() {
        const auto bytes =
            test_support::ReadFileText(test_support::BuiltFile(L"CorvaneTo3CX-settings.reg"));
        if (!bytes || bytes->size() % 2 != 0 || !bytes->starts_with("\xFF\xFE")) {
            ADD_FAILURE() << "no text in UTF-16";
            return {};
        }
        return {reinterpret_cast<const wchar_t*>(bytes->data()) + 1, bytes->size() / 2 - 1};
    }
    void Import(const std::wstring& text) const {
        const std::string bytes(reinterpret_cast<const char*>(text.data()), text.size() * 2);
        const std::wstring file = folder_.Write(L"settings.reg", "\xFF\xFE" + bytes);
        ASSERT_EQ(test_support::RunToEnd(L"C:\\windows\\regedit.exe", L"/S \"" + file + L"\""), 0u);
    }
    // All that the key holds; a value that is no text appears without one.
    static Values Stored() {
        Values values;
        const RegistryKey key(HKEY_CURRENT_USER, ownKey);
        wchar_t name[200];
        wchar_t data[200];
        for (DWORD index = 0;; ++index) {
            DWORD nameSize = 200;
            DWORD bytes = sizeof(data);
            DWORD type = 0;
            if (RegEnumValueW(key.get(), index, name, &nameSize, nullptr, &type,
                              reinterpret_cast<BYTE*>(data), &bytes) != ERROR_SUCCESS) {
                return values;
            }
            values[name] = type == REG_SZ ? data : L"<no text>";
        }
    }
    std::wstring Loaded(const std::wstring& option) {
        Form form(&view_);
        Settings(form, registry_, status_, boxes_).LoadSettings();
        return OptionText(form.control(option));
    }

private:
    const test_support::TemporaryFolder folder_;
    cRegistry registry_;
    FakeStatusWriter status_;
    FakeMessageBoxes boxes_;
    FakeFormView view_;
};

Values ExpectedDefaults() {
    Values values{{L"chkWriteLog", L"0"}};
    for (const ExpectedOption& option : ExpectedOptions())
        values[option.name] = option.defaultText;
    return values;
}

TEST_F(SettingsFileTest, StoresEveryOptionsDefaultAndNothingElse) {
    Import(FileText());

    EXPECT_EQ(Stored(), ExpectedDefaults());
}

TEST_F(SettingsFileTest, WhatIsWrittenIntoItIsReadBackAsMeant) {
    std::wstring text = FileText();
    const Values meant{{L"chkGlobalEnable", L"0"},
                       {L"txtCallerIDFormat", L"+## \"###\" ####"},
                       {L"txtLinkedItemPath", L"\\\\Server\\Aufnahmen \x00FC"},
                       {L"optProcessEnd", L"True"}};
    for (const auto& [option, value] : meant) {
        const auto entry = text.find(L"\n\"" + option + L"\"=\"");
        ASSERT_NE(entry, std::wstring::npos) << option;
        const std::wstring escaped = ReplaceAll(ReplaceAll(value, L"\\", L"\\\\"), L"\"", L"\\\"");
        text.replace(entry, text.find(L'\r', entry) - entry,
                     L"\n\"" + option + L"\"=\"" + escaped + L"\"");
    }

    Import(text);

    for (const auto& [option, value] : meant)
        EXPECT_EQ(Loaded(option), value) << option;
    // Of one group, the last that is chosen counts.
    EXPECT_EQ(Loaded(L"optProcessConnect"), L"False");
}

}  // namespace
}  // namespace corvane::test
