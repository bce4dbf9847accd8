#include "check/platform/FileBytes.h"

#include <algorithm>

#include "platform/kit/ComError.h"
#include "util/Text.h"

namespace corvane {

void ThrowFileError(std::wstring_view what, const std::wstring& path) {
    RuntimeError error = ErrorFromHResult(HRESULT_FROM_WIN32(GetLastError()));
    error.description = Join(what, L" ", path, L": ", error.description);
    throw error;
}

void WriteBytes(HANDLE file, std::string_view bytes, const std::wstring& path) {
    // How much Windows writes at once at the most.
    constexpr std::size_t most = std::size_t{1} << 24U;
    while (!bytes.empty()) {
        DWORD count = 0;
        if (!WriteFile(file, bytes.data(), static_cast<DWORD>(std::min(bytes.size(), most)), &count,
                       nullptr)) {
            ThrowFileError(L"Could not write", path);
        }
        bytes.remove_prefix(count);
    }
}

}  // namespace corvane
