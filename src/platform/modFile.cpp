#include "platform/modFile.h"

#include <limits>
#include <memory>
#include <type_traits>

#include "platform/ComError.h"
#include "util/AnsiText.h"
#include "util/RecordingCandidate.h"
#include "util/RuntimeError.h"
#include "util/Text.h"
#include "util/Windows.h"

#include <oleauto.h>

namespace corvane {

namespace {

struct CloseHandleLater {
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using UniqueHandle = std::unique_ptr<std::remove_pointer_t<HANDLE>, CloseHandleLater>;

struct FindCloseLater {
    void operator()(HANDLE handle) const { FindClose(handle); }
};
using UniqueFind = std::unique_ptr<std::remove_pointer_t<HANDLE>, FindCloseLater>;

[[noreturn]] void ThrowLastError() {
    const DWORD code = GetLastError();
    // A file that somebody else keeps to himself is a refused one.
    if (code == ERROR_SHARING_VIOLATION || code == ERROR_LOCK_VIOLATION)
        throw MakeRuntimeError(ErrorNumber::PermissionDenied);
    throw ErrorFromHResult(HRESULT_FROM_WIN32(code));
}

// One writer at a time, across processes: Windows appends whole texts by itself, but a file server
// (or Wine) may look for the end first and write second, and then two calls at once would write
// over each other. The locked byte lies far behind any text, so that readers are never kept out.
class AppendTurn {
public:
    explicit AppendTurn(HANDLE file) : file_(file) {
        place_.OffsetHigh = 0x7FFFFFFF;
        // A file system without locks leaves the line as safe as it can make it.
        locked_ = LockFileEx(file_, LOCKFILE_EXCLUSIVE_LOCK, 0, 1, 0, &place_) != FALSE;
    }
    AppendTurn(const AppendTurn&) = delete;
    AppendTurn& operator=(const AppendTurn&) = delete;
    ~AppendTurn() {
        if (locked_)
            UnlockFileEx(file_, 0, 1, 0, &place_);
    }

private:
    HANDLE file_;
    OVERLAPPED place_{};
    bool locked_;
};

bool Attributes(const std::wstring& path, DWORD& attributes) {
    attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES;
}

double LocalAutomationDate(const FILETIME& utc) {
    SYSTEMTIME utcTime{};
    SYSTEMTIME localTime{};
    TIME_ZONE_INFORMATION zone{};
    double date = 0;
    FileTimeToSystemTime(&utc, &utcTime);
    GetTimeZoneInformation(&zone);
    // The zone's rules for that date decide, so a summer file is shown in summer time.
    SystemTimeToTzSpecificLocalTime(&zone, &utcTime, &localTime);
    SystemTimeToVariantTime(&localTime, &date);
    return date;
}

}  // namespace

bool FileExists(const std::wstring& path) {
    DWORD attributes = 0;
    return Attributes(path, attributes) && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

bool FolderExists(const std::wstring& path) {
    DWORD attributes = 0;
    return Attributes(path, attributes) && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

void AppendToFile(const std::wstring& path, std::wstring_view text) {
    // Reading is asked for because a lock needs it.
    const HANDLE opened = CreateFileW(path.c_str(), FILE_APPEND_DATA | FILE_READ_DATA,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    if (opened == INVALID_HANDLE_VALUE)
        ThrowLastError();
    const UniqueHandle file(opened);
    const std::string ansi = AnsiFromText(text);
    const AppendTurn turn(file.get());
    DWORD written = 0;
    if (!WriteFile(file.get(), ansi.data(), static_cast<DWORD>(ansi.size()), &written, nullptr)) {
        ThrowLastError();
    }
}

NewestFile GetNewestFileInFolder(const std::wstring& folder, const std::wstring& pattern,
                                 std::uint32_t attributeMask) {
    NewestFile newest;
    FILETIME best{};
    WIN32_FIND_DATAW entry;
    const HANDLE search = FindFirstFileW((AddTrailingBackslash(folder) + pattern).c_str(), &entry);
    if (search != INVALID_HANDLE_VALUE) {
        const UniqueFind owner(search);
        do {
            const std::wstring_view nameField(entry.cFileName, std::size(entry.cFileName));
            if (!IsCandidate(nameField, entry.dwFileAttributes, attributeMask))
                continue;
            if (newest.filesSeen == std::numeric_limits<std::int32_t>::max()) {
                throw MakeRuntimeError(ErrorNumber::Overflow);
            }
            ++newest.filesSeen;
            // Of equal times the first one met stays.
            if (CompareFileTime(&entry.ftLastWriteTime, &best) > 0) {
                best = entry.ftLastWriteTime;
                newest.name = StripAtNull(nameField);
            }
        } while (FindNextFileW(search, &entry));
    }
    newest.modified = LocalAutomationDate(best);
    return newest;
}

bool modFile::FileExists(const std::wstring& path) const {
    return corvane::FileExists(path);
}

bool modFile::FolderExists(const std::wstring& path) const {
    return corvane::FolderExists(path);
}

bool modFile::MakeFolder(const std::wstring& path) {
    return CreateDirectoryW(path.c_str(), nullptr) || corvane::FolderExists(path);
}

void modFile::AppendToFile(const std::wstring& path, const std::wstring& text) {
    corvane::AppendToFile(path, text);
}

NewestFile modFile::GetNewestFileInFolder(const std::wstring& folder, const std::wstring& pattern,
                                          std::uint32_t attributeMask) const {
    return corvane::GetNewestFileInFolder(folder, pattern, attributeMask);
}

}  // namespace corvane
