#include "platform/modFile.h"

#include <optional>

#include "platform/kit/AnsiText.h"
#include "platform/kit/ComError.h"
#include "platform/kit/Handles.h"
#include "platform/kit/OwnPlace.h"
#include "util/RecordingCandidate.h"
#include "util/RuntimeError.h"
#include "util/Text.h"

#include <oleauto.h>

namespace corvane {

namespace {

[[noreturn]] void ThrowLastError() {
    const DWORD code = GetLastError();
    // A file that somebody else keeps to himself is a refused one.
    if (code == ERROR_SHARING_VIOLATION || code == ERROR_LOCK_VIOLATION)
        throw MakeRuntimeError(ErrorNumber::PermissionDenied);
    throw ErrorFromHResult(HRESULT_FROM_WIN32(code));
}

// One writer at a time: Windows appends whole texts by itself, but Wine and some file servers look
// for the end first and write second, and then two runs at once would write over each other. The
// turn is a matter of the program's own instances; the file itself is locked for nobody, and an
// instance that hangs keeps the others waiting for a moment only.
UniqueMutexHold TakeAppendTurn(HANDLE mutex) {
    constexpr DWORD longestWaitMilliseconds = 100;
    // Fails where there is no mutex: a line out of turn is better than none.
    const DWORD answer = WaitForSingleObject(mutex, longestWaitMilliseconds);
    return answer == WAIT_OBJECT_0 || answer == WAIT_ABANDONED ? UniqueMutexHold(mutex)
                                                               : UniqueMutexHold();
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
    std::optional<OwnPlace> place;
    if (path != checkedPath_)
        place.emplace(path).CheckFolder();
    const UniqueHandle file(CreateFileW(path.c_str(), FILE_APPEND_DATA,
                                        FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS,
                                        FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file)
        ThrowLastError();
    if (place) {
        place->CheckFile(file.get());
        checkedPath_ = path;
    }
    const std::string ansi = AnsiFromText(text);
    if (!appendMutex_)
        appendMutex_ =
            UniqueHandle(CreateMutexW(nullptr, FALSE, L"Local\\CorvaneTo3CX.AppendToFile"));
    const UniqueMutexHold turn = TakeAppendTurn(appendMutex_.get());
    DWORD written = 0;
    if (!WriteFile(file.get(), ansi.data(), static_cast<DWORD>(ansi.size()), &written, nullptr))
        ThrowLastError();
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
