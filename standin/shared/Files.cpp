#include "shared/Files.h"

#include "shared/Handles.h"

namespace practice {

std::optional<std::string> ReadWholeFile(const std::wstring& file) {
    const KernelHandle handle(CreateFileW(file.c_str(), GENERIC_READ,
                                          FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                          nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!handle)
        return std::nullopt;
    std::string content;
    char buffer[4096];
    DWORD read = 0;
    while (ReadFile(handle.get(), buffer, sizeof buffer, &read, nullptr) && read > 0)
        content.append(buffer, read);
    return content;
}

bool WriteWholeFile(const std::wstring& file, std::string_view content) {
    const KernelHandle handle(CreateFileW(file.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                          CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    DWORD written = 0;
    return handle &&
           WriteFile(handle.get(), content.data(), static_cast<DWORD>(content.size()), &written,
                     nullptr) &&
           written == content.size();
}

bool FileExists(const std::wstring& file) {
    return GetFileAttributesW(file.c_str()) != INVALID_FILE_ATTRIBUTES;
}

}  // namespace practice
