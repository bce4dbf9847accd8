#include "check/platform/WindowsReportFiles.h"

#include "check/platform/FileBytes.h"
#include "platform/kit/AnsiText.h"
#include "platform/kit/Handles.h"
#include "util/Text.h"

namespace corvane {

std::wstring WindowsReportFiles::FullPath(const std::wstring& path) const {
    std::wstring full(GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
    full.resize(
        GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
    return full.empty() ? path : full;
}

bool WindowsReportFiles::Exists(const std::wstring& path) const {
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::string WindowsReportFiles::Utf8(std::wstring_view text) const {
    return text.empty() ? std::string() : AnsiFromText(text, CP_UTF8);
}

void WindowsReportFiles::WriteNew(const std::wstring& path, std::string_view bytes) {
    const std::wstring part = Join(path, L".", std::to_wstring(GetCurrentProcessId()), L".part");
    UniqueHandle file(CreateFileW(part.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                  FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file)
        ThrowFileError(L"Could not write", path);
    try {
        WriteBytes(file.get(), bytes, path);
        file = UniqueHandle();
        if (!MoveFileW(part.c_str(), path.c_str()))
            ThrowFileError(L"Could not write", path);
    } catch (...) {
        file = UniqueHandle();
        DeleteFileW(part.c_str());
        throw;
    }
}

}  // namespace corvane
