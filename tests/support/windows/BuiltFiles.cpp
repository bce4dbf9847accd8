#include "support/windows/BuiltFiles.h"

#include <windows.h>

namespace test_support {
namespace {

// The test programs stand together in one folder of the build.
std::filesystem::path TestsFolder() {
    return std::filesystem::path(OwnProgram()).parent_path();
}

std::wstring FullPath(const std::filesystem::path& path) {
    wchar_t full[MAX_PATH];
    return std::wstring(full, GetFullPathNameW(path.c_str(), MAX_PATH, full, nullptr));
}

}  // namespace

std::wstring OwnProgram() {
    wchar_t path[MAX_PATH];
    return std::wstring(path, GetModuleFileNameW(nullptr, path, MAX_PATH));
}

std::wstring BuiltFile(const std::filesystem::path& name) {
    return FullPath(TestsFolder() / ".." / name);
}

std::wstring StandinFile(const std::filesystem::path& name) {
    return FullPath(TestsFolder() / STANDIN_FOLDER / name);
}

}  // namespace test_support
