#include "shared/Options.h"

#include <windows.h>

#include <shellapi.h>

#include "shared/Handles.h"
#include "shared/Text.h"

namespace practice {
namespace {

struct Switch {
    std::wstring_view name;
    bool Options::*flag;
};

struct Setting {
    std::wstring_view name;
    std::wstring Options::*text;
    bool mayBeEmpty = true;
};

constexpr Switch switches[] = {
    {L"Fresh", &Options::fresh},
    {L"NoRecord", &Options::noRecord},
    {L"NoIni", &Options::noIni},
    {L"Hidden", &Options::hidden},
    {L"Dump", &Options::dump},
    {L"RegServer", &Options::registerServer},
    {L"UnregServer", &Options::unregisterServer},
};

constexpr Setting settings[] = {
    {L"Data", &Options::dataFolder},       {L"User", &Options::user},
    {L"Version", &Options::version},       {L"Record", &Options::record},
    {L"ReadyEvent", &Options::readyEvent}, {L"Sql", &Options::sql, false},
    {L"Out", &Options::outFile},           {L"Dial", &Options::dial, false},
};

// COM starts the server with this one; it means nothing further here.
constexpr std::wstring_view startedByCom = L"Embedding";

std::wstring FullFolder(const std::wstring& folder) {
    std::wstring full(GetFullPathNameW(folder.c_str(), 0, nullptr, nullptr), L'\0');
    const DWORD length =
        GetFullPathNameW(folder.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
    full.resize(length);
    if (full.empty() || full.back() != L'\\')
        full += L'\\';
    return full;
}

bool Apply(Options& options, const std::wstring& argument) {
    if (argument.empty() || (argument[0] != L'/' && argument[0] != L'-'))
        return false;
    const std::size_t colon = argument.find(L':');
    const std::wstring_view name = std::wstring_view(argument).substr(1, colon - 1);
    if (colon == std::wstring::npos) {
        for (const Switch& known : switches) {
            if (EqualsIgnoringCase(name, known.name)) {
                options.*known.flag = true;
                return true;
            }
        }
        return EqualsIgnoringCase(name, startedByCom);
    }
    for (const Setting& known : settings) {
        if (EqualsIgnoringCase(name, known.name)) {
            options.*known.text = argument.substr(colon + 1);
            return known.mayBeEmpty || !(options.*known.text).empty();
        }
    }
    return false;
}

}  // namespace

Options ParseOptions(const std::vector<std::wstring>& arguments) {
    Options options;
    for (const std::wstring& argument : arguments) {
        if (!Apply(options, argument))
            options.unknown.push_back(argument);
    }
    options.dataFolder =
        options.dataFolder.empty() ? ProgramFolder() : FullFolder(options.dataFolder);
    return options;
}

std::vector<std::wstring> ProcessArguments() {
    int count = 0;
    const Owned<LPWSTR*> arguments(CommandLineToArgvW(GetCommandLineW(), &count));
    std::vector<std::wstring> result;
    for (int i = 1; i < count; ++i)
        result.emplace_back(arguments.get()[i]);
    return result;
}

std::wstring ProgramPath() {
    std::wstring path(32'768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    // Wine hands out this form, which COM cannot start a server by.
    constexpr std::wstring_view longForm = L"\\\\?\\";
    if (StartsWithIgnoringCase(path, longForm) && path.size() > 5 && path[5] == L':')
        path.erase(0, longForm.size());
    return path;
}

std::wstring ProgramFolder() {
    const std::wstring path = ProgramPath();
    return path.substr(0, path.rfind(L'\\') + 1);
}

}  // namespace practice
