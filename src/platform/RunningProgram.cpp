#include "platform/RunningProgram.h"

#include <utility>

#include "platform/kit/Windows.h"
#include "util/Text.h"

namespace corvane {

namespace {

// A starter may have named the program by \\?\C:\...; users and the registry write C:\...
std::wstring WithoutVerbatimPrefix(std::wstring path) {
    constexpr std::wstring_view prefix = L"\\\\?\\";
    if (path.starts_with(prefix) && path.size() > 5 && path[5] == L':')
        path.erase(0, prefix.size());
    return path;
}

std::wstring ModulePath() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length =
            GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return WithoutVerbatimPrefix(std::move(path));
        }
        path.resize(path.size() * 2);
    }
}

}  // namespace

ProgramInfo RunningProgramInfo(int majorVersion, int minorVersion, int revision) {
    const std::wstring path = ModulePath();
    const auto nameBegin = path.find_last_of(L'\\');
    const std::wstring fileName = path.substr(nameBegin + 1);
    ProgramInfo info;
    info.folder = path.substr(0, nameBegin);
    info.executableName = fileName.substr(0, fileName.find_last_of(L'.'));
    info.majorVersion = majorVersion;
    info.minorVersion = minorVersion;
    info.revision = revision;
    return info;
}

std::wstring RawCommandLine() {
    return std::wstring(ArgumentsOf(::GetCommandLineW(), ModulePath()));
}

}  // namespace corvane
