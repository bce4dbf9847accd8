#include "platform/modFile.h"

#include "platform/kit/AnsiText.h"
#include "platform/kit/AppendBytes.h"
#include "platform/kit/ComError.h"
#include "platform/kit/Handles.h"
#include "util/RecordingCandidate.h"
#include "util/RuntimeError.h"
#include "util/Text.h"

#include <oleauto.h>

namespace corvane {

namespace {

[[noreturn]] void ThrowAppendError(DWORD code) {
    // A file that somebody else keeps to himself is a refused one.
    if (code == ERROR_SHARING_VIOLATION || code == ERROR_LOCK_VIOLATION || code == leadsElsewhere) {
        RuntimeError error = MakeRuntimeError(ErrorNumber::PermissionDenied);
        if (code == leadsElsewhere)
            error.description += L" (it leads to another place)";
        throw error;
    }
    throw ErrorFromHResult(HRESULT_FROM_WIN32(code));
}

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

bool modFile::FileExists(const std::wstring& path) const {
    DWORD attributes = 0;
    return Attributes(path, attributes) && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

bool modFile::FolderExists(const std::wstring& path) const {
    DWORD attributes = 0;
    return Attributes(path, attributes) && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool modFile::CopyToNew(const std::wstring& from, const std::wstring& to) {
    return CopyFileW(from.c_str(), to.c_str(), TRUE) || FileExists(to);
}

void modFile::AppendToFile(const std::wstring& path, const std::wstring& text) {
    const CheckPlace check = path == checkedPath_ ? CheckPlace::No : CheckPlace::Yes;
    if (const DWORD code = AppendBytes(path.c_str(), AnsiFromText(text), check, appendMutex_);
        code != ERROR_SUCCESS) {
        ThrowAppendError(code);
    }
    checkedPath_ = path;
}

NewestFile modFile::GetNewestFileInFolder(const std::wstring& folder, const std::wstring& pattern,
                                          std::uint32_t attributeMask) const {
    NewestCandidate newest;
    WIN32_FIND_DATAW entry;
    const UniqueFind search(
        FindFirstFileW((AddTrailingBackslash(folder) + pattern).c_str(), &entry));
    for (bool more(search); more; more = FindNextFileW(search.get(), &entry)) {
        const std::wstring_view nameField(entry.cFileName, std::size(entry.cFileName));
        if (!IsCandidate(nameField, entry.dwFileAttributes, attributeMask))
            continue;
        newest.Meet(nameField, ULARGE_INTEGER{{entry.ftLastWriteTime.dwLowDateTime,
                                               entry.ftLastWriteTime.dwHighDateTime}}
                                   .QuadPart);
    }
    // The walk may also end because the folder went away.
    const bool complete = !search || GetLastError() == ERROR_NO_MORE_FILES;
    const ULARGE_INTEGER time{.QuadPart = newest.time};
    return {newest.name, LocalAutomationDate({time.LowPart, time.HighPart}), newest.count,
            complete};
}

bool modFile::MakeFolder(const std::wstring& path) {
    return CreateDirectoryW(path.c_str(), nullptr) || FolderExists(path);
}

}  // namespace corvane
