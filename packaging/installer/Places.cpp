#include "installer/Places.h"

#include <utility>

#include "installer/FolderRights.h"
#include "platform/kit/Handles.h"

namespace corvane::installer {

namespace {

constexpr std::size_t rootLength = 3;  // C:\ .

std::wstring Uppercase(std::wstring text) {
    CharUpperW(text.data());
    return text;
}

bool Exists(const std::wstring& path) {
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::wstring Above(const std::wstring& path) {
    const auto backslash = path.find_last_of(L'\\');
    return backslash < rootLength ? path.substr(0, rootLength) : path.substr(0, backslash);
}

// Where an opened file or folder stands, whatever its path led through; empty for "cannot tell".
std::wstring PlaceOf(HANDLE opened) {
    wchar_t buffer[MAX_PATH];
    const DWORD length = GetFinalPathNameByHandleW(opened, buffer, MAX_PATH, FILE_NAME_NORMALIZED);
    constexpr std::size_t prefix = 4;  // \\?\ before the path
    return length > prefix && length < MAX_PATH ? std::wstring(buffer + prefix, length - prefix)
                                                : std::wstring();
}

// A file or folder that stays where it is while this lives: nobody can rename it meanwhile.
class HeldObject {
public:
    HeldObject(const std::wstring& path, DWORD access)
        : path_(path),
          handle_(CreateFileW(path.c_str(), access | READ_CONTROL | FILE_READ_ATTRIBUTES,
                              FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                              FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT, nullptr)) {
    }

    // It is no link, of no kind, nor does its path lead through one; and it is guarded.
    [[nodiscard]] bool IsOurs(bool folder, ACCESS_MASK harm) const {
        BY_HANDLE_FILE_INFORMATION information{};
        if (!handle_ || !GetFileInformationByHandle(handle_.get(), &information))
            return false;
        const DWORD attributes = information.dwFileAttributes;
        if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 ||
            ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) != folder ||
            (!folder && information.nNumberOfLinks > 1)) {
            return false;
        }
        const std::wstring place = PlaceOf(handle_.get());
        if (CompareStringOrdinal(place.c_str(), -1, path_.c_str(), -1, TRUE) != CSTR_EQUAL)
            return false;
        PSID owner = nullptr;
        PACL rights = nullptr;
        PSECURITY_DESCRIPTOR descriptor = nullptr;
        if (GetSecurityInfo(handle_.get(), SE_FILE_OBJECT,
                            OWNER_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION, &owner, nullptr,
                            &rights, nullptr, &descriptor) != ERROR_SUCCESS) {
            return false;
        }
        const UniqueLocalMemory memory(descriptor);
        return IsGuarded(owner, rights, harm);
    }

    [[nodiscard]] bool SetRights(PACL rights) const {
        return SetSecurityInfo(handle_.get(), SE_FILE_OBJECT,
                               DACL_SECURITY_INFORMATION | PROTECTED_DACL_SECURITY_INFORMATION,
                               nullptr, nullptr, rights, nullptr) == ERROR_SUCCESS;
    }

private:
    std::wstring path_;
    UniqueHandle handle_;
};

// Windows makes the folder with its rights at once, so there is no moment without them.
bool MakeFolder(const std::wstring& path, Descriptor& descriptor) {
    return CreateDirectoryW(path.c_str(), descriptor.attributes());
}

bool MakeFile(const std::wstring& path, Descriptor& descriptor) {
    return static_cast<bool>(
        UniqueHandle(CreateFileW(path.c_str(), FILE_APPEND_DATA, 0, descriptor.attributes(),
                                 CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr)));
}

// The folders between the drive and the program's: whoever may exchange one of them exchanges the
// program.
Verdict MakeFoldersAbove(const std::wstring& path) {
    const std::wstring above = Above(path);
    if (above.size() <= rootLength)
        return Verdict::Good;
    if (const Verdict verdict = MakeFoldersAbove(above); verdict != Verdict::Good)
        return verdict;
    if (Exists(above)) {
        return HeldObject(above, 0).IsOurs(true, Harm::exchange) ? Verdict::Good
                                                                 : Verdict::NotTrusted;
    }
    Descriptor descriptor(programFolderRights);
    return MakeFolder(above, descriptor) ? Verdict::Good : Verdict::Failed;
}

bool MoveAside(const std::wstring& path, std::wstring& movedTo) {
    constexpr int mostNames = 1000;
    for (int number = 1; number <= mostNames; ++number) {
        std::wstring aside = path + L".before-setup-" + std::to_wstring(number);
        if (Exists(aside))
            continue;
        if (!MoveFileW(path.c_str(), aside.c_str()))
            return false;
        movedTo = std::move(aside);
        return true;
    }
    return false;
}

template <class Make>
Verdict MakeLogPlace(const std::wstring& path, bool folder, const wchar_t* rights, Make make,
                     std::wstring& movedTo) {
    Descriptor descriptor(rights);
    if (Exists(path)) {
        {
            // Appending to the log is every user's right.
            const ACCESS_MASK harm = folder ? Harm::write : Harm::write & ~FILE_APPEND_DATA;
            const HeldObject held(path, WRITE_DAC);
            if (held.IsOurs(folder, harm))
                return held.SetRights(descriptor.rights()) ? Verdict::Good : Verdict::Failed;
        }
        if (!MoveAside(path, movedTo))
            return Verdict::NotTrusted;
    }
    return make(path, descriptor) ? Verdict::Good : Verdict::Failed;
}

}  // namespace

std::wstring PathOnDisk(const std::wstring& path) {
    wchar_t buffer[MAX_PATH];
    const DWORD length = GetFullPathNameW(path.c_str(), MAX_PATH, buffer, nullptr);
    if (length == 0 || length >= MAX_PATH)
        return path;
    std::wstring whole(buffer, length);
    while (whole.size() > rootLength && whole.back() == L'\\')
        whole.pop_back();
    if (whole.size() <= rootLength)
        return Uppercase(whole);
    std::wstring name = whole.substr(whole.find_last_of(L'\\') + 1);
    WIN32_FIND_DATAW entry;
    if (const UniqueFind found(FindFirstFileW(whole.c_str(), &entry)); found)
        name = entry.cFileName;
    const std::wstring above = PathOnDisk(Above(whole));
    return above + (above.size() > rootLength ? L"\\" : L"") + name;
}

Verdict CheckPath(const std::wstring& path) {
    // GoldMine takes a blank for the end of the path, a comma for the end of the instruction's
    // part, and a percent sign for the number's place.
    constexpr std::size_t longest = 200;
    if (path.size() <= rootLength || path.size() > longest || path[1] != L':' || path[2] != L'\\' ||
        path.find_first_of(L" \t,%*?") != std::wstring::npos) {
        return Verdict::Unsuitable;
    }
    const std::wstring root = path.substr(0, rootLength);
    DWORD flags = 0;
    if (GetDriveTypeW(root.c_str()) != DRIVE_FIXED ||
        !GetVolumeInformationW(root.c_str(), nullptr, 0, nullptr, nullptr, &flags, nullptr, 0) ||
        (flags & FILE_PERSISTENT_ACLS) == 0) {
        return Verdict::Unsuitable;
    }
    return Verdict::Good;
}

Verdict MakeProgramFolder(const std::wstring& path, bool madeBySetup) {
    if (const Verdict verdict = CheckPath(path); verdict != Verdict::Good)
        return verdict;
    if (const Verdict verdict = MakeFoldersAbove(path); verdict != Verdict::Good)
        return verdict;
    Descriptor descriptor(programFolderRights);
    if (Exists(path)) {
        if (madeBySetup) {
            const HeldObject held(path, WRITE_DAC);
            if (!held.IsOurs(true, Harm::write))
                return Verdict::NotTrusted;
            return held.SetRights(descriptor.rights()) ? Verdict::Good : Verdict::Failed;
        }
        const DWORD attributes = GetFileAttributesW(path.c_str());
        // Only an empty folder can be removed, and nothing that is held open in it comes along.
        if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 || !RemoveDirectoryW(path.c_str()))
            return Verdict::NotTrusted;
    }
    if (MakeFolder(path, descriptor))
        return Verdict::Good;
    return Exists(path) ? Verdict::NotTrusted : Verdict::Failed;
}

Verdict MakeLog(const std::wstring& commonFolder, std::wstring& movedTo) {
    // The administrator may have moved it.
    const UniqueHandle common(CreateFileW(commonFolder.c_str(), FILE_READ_ATTRIBUTES,
                                          FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                          nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS,
                                          nullptr));
    std::wstring path = PlaceOf(common.get());
    for (const wchar_t* level : {L"\\Halvorn Systems", L"\\CorvaneTo3CX"}) {
        path += level;
        if (const Verdict verdict = MakeLogPlace(path, true, logFolderRights, MakeFolder, movedTo);
            verdict != Verdict::Good) {
            return verdict;
        }
    }
    return MakeLogPlace(path + L"\\CorvaneTo3CX.log", false, logFileRights, MakeFile, movedTo);
}

}  // namespace corvane::installer
