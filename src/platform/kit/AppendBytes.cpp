#include "platform/kit/AppendBytes.h"

#include <optional>

#include "platform/kit/OwnPlace.h"

namespace corvane {

namespace {

// One writer at a time: Windows appends whole texts by itself, but Wine and some file servers look
// for the end first and write second, and then two runs at once would write over each other. The
// turn is a matter of the program's own instances; the file itself is locked for nobody, and an
// instance that hangs keeps the others waiting for a moment only.
UniqueMutexHold TakeTurn(UniqueHandle& mutex) {
    constexpr DWORD longestWaitMilliseconds = 100;
    if (!mutex)
        mutex = UniqueHandle(CreateMutexW(nullptr, FALSE, L"Local\\CorvaneTo3CX.AppendToFile"));
    // Fails where there is no mutex: a line out of turn is better than none.
    const DWORD answer = WaitForSingleObject(mutex.get(), longestWaitMilliseconds);
    return answer == WAIT_OBJECT_0 || answer == WAIT_ABANDONED ? UniqueMutexHold(mutex.get())
                                                               : UniqueMutexHold();
}

DWORD WriteAll(HANDLE file, std::string_view bytes) {
    while (!bytes.empty()) {
        DWORD written = 0;
        if (!WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr))
            return GetLastError();
        // Less than all of it is written where there is no room for the rest.
        if (written == 0)
            return ERROR_DISK_FULL;
        bytes.remove_prefix(written);
    }
    return ERROR_SUCCESS;
}

}  // namespace

DWORD AppendBytes(const wchar_t* path, std::string_view bytes, CheckPlace check,
                  UniqueHandle& mutex) {
    std::optional<OwnPlace> place;
    if (check == CheckPlace::Yes && !place.emplace(path).HasFolder())
        return leadsElsewhere;
    const UniqueHandle file(CreateFileW(path, FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                        nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file)
        return GetLastError();
    if (place && !place->HasFile(file.get()))
        return leadsElsewhere;
    const UniqueMutexHold turn = TakeTurn(mutex);
    return WriteAll(file.get(), bytes);
}

}  // namespace corvane
