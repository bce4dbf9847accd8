#include "CheckTest.h"

#include <algorithm>

#include "support/windows/BuiltFiles.h"
#include "support/windows/Files.h"

namespace end_to_end {

namespace {

const std::wstring checkPath = std::wstring(appFolder) + L"CorvaneCheck.exe";

std::string Stamp(const std::filesystem::path& path) {
    std::error_code failed;
    const auto time = std::filesystem::last_write_time(path, failed).time_since_epoch().count();
    return Utf8(path.wstring()) + " " + std::to_string(time);
}

void AddValues(Lines& state, HKEY root, const std::wstring& path) {
    state.push_back(Utf8(path) + (RegistryKeyExists(root, path) ? " is there" : " is not there"));
    for (const auto& [name, text] : RegistryValues(root, path))
        state.push_back(name + "=" + text);
}

}  // namespace

void CheckTest::SetUpTestSuite() {
    EndToEndTest::SetUpTestSuite();
    CopyFileTo(BuiltFile("CorvaneCheck.exe"), checkPath);
}

Checked CheckTest::Check(const std::string& commandLine) {
    const std::wstring output = std::wstring(appFolder) + L"..\\checked.txt";
    Checked checked;
    const DWORD begin = GetTickCount();
    {
        const Process process(checkPath, Wide(commandLine), output);
        EXPECT_TRUE(process.WaitForEnd());
        checked.exitCode = process.exitCode();
    }
    checked.milliseconds = GetTickCount() - begin;
    const std::string text = ReadFileText(output).value_or("<nothing>");
    std::ranges::remove_copy(text, std::back_inserter(checked.text), '\r');
    DeleteFileW(output.c_str());
    return checked;
}

Lines CheckTest::State() const {
    Lines state;
    AddValues(state, HKEY_CURRENT_USER, ownKey);
    for (const wchar_t* key : {phoneKey, myPhoneKey, crmKey})
        AddValues(state, HKEY_LOCAL_MACHINE, key);
    for (const wchar_t* folder : {appFolder, dataFolder, recordingsFolder}) {
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
            // GoldMine's own, which it writes when it is asked.
            if (entry.path().filename() != L"journal.txt")
                state.push_back(Stamp(entry.path()));
        }
    }
    state.push_back(LogText());
    for (const std::string& command : Commands()) {
        if (!command.starts_with("<GMAPI call=\"Macro\">") &&
            !command.starts_with("<GMAPI call=\"DataStream\">")) {
            state.push_back(command);
        }
    }
    return state;
}

}  // namespace end_to_end
