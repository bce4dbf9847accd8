#include "installer/FolderRights.h"

#include <sddl.h>

#include <algorithm>
#include <vector>

#include "platform/kit/Handles.h"

namespace corvane::installer {

namespace {

using Sid = std::vector<BYTE>;

Sid Copy(PSID sid) {
    const auto* bytes = static_cast<const BYTE*>(sid);
    return {bytes, bytes + GetLengthSid(sid)};
}

Sid FromText(const wchar_t* text) {
    PSID sid = nullptr;
    if (!ConvertStringSidToSidW(text, &sid))
        return {};
    const UniqueLocalMemory memory(sid);
    return Copy(sid);
}

// Whom the files belong to that this process makes: for an elevated administrator, their group.
Sid OwnerOfNewFiles() {
    wchar_t folder[MAX_PATH + 1];
    wchar_t file[MAX_PATH];
    if (GetTempPathW(MAX_PATH + 1, folder) == 0 || GetTempFileNameW(folder, L"own", 0, file) == 0)
        return {};
    PSID owner = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    const bool known =
        GetNamedSecurityInfoW(file, SE_FILE_OBJECT, OWNER_SECURITY_INFORMATION, &owner, nullptr,
                              nullptr, nullptr, &descriptor) == ERROR_SUCCESS;
    DeleteFileW(file);
    const UniqueLocalMemory memory(descriptor);
    return known ? Copy(owner) : Sid();
}

bool IsTrusted(PSID sid) {
    static const std::vector<Sid> trusted{
        FromText(L"S-1-5-18"),      // the system
        FromText(L"S-1-5-32-544"),  // the administrators
        FromText(
            L"S-1-5-80-956008885-3418522649-1831038044-1853292631-2271478464"),  // Windows' own
        FromText(L"S-1-3-0"),  // stands for the owner of what is made in a folder
        FromText(L"S-1-3-4"),  // the owner, who is looked at himself
        OwnerOfNewFiles(),
    };
    return std::ranges::any_of(trusted, [sid](const Sid& each) {
        return !each.empty() && EqualSid(sid, const_cast<BYTE*>(each.data()));
    });
}

}  // namespace

bool IsGuarded(PSID owner, PACL rights, ACCESS_MASK harm) {
    // Without a list of rights, everybody may do everything.
    if (!owner || !rights || !IsTrusted(owner))
        return false;
    for (DWORD index = 0; index < rights->AceCount; ++index) {
        void* entry = nullptr;
        if (!GetAce(rights, index, &entry))
            return false;
        auto* allowed = static_cast<ACCESS_ALLOWED_ACE*>(entry);
        if (allowed->Header.AceType == ACCESS_DENIED_ACE_TYPE)
            continue;
        // Other kinds of entries stand on no folder of a plain system.
        if (allowed->Header.AceType != ACCESS_ALLOWED_ACE_TYPE)
            return false;
        if ((allowed->Mask & harm) != 0 && !IsTrusted(&allowed->SidStart))
            return false;
    }
    return true;
}

Descriptor::Descriptor(const wchar_t* text) {
    ConvertStringSecurityDescriptorToSecurityDescriptorW(text, SDDL_REVISION_1, &descriptor_,
                                                         nullptr);
    attributes_.lpSecurityDescriptor = descriptor_;
}

Descriptor::~Descriptor() {
    LocalFree(descriptor_);
}

PSID Descriptor::owner() const {
    PSID owner = nullptr;
    BOOL defaulted = FALSE;
    return GetSecurityDescriptorOwner(descriptor_, &owner, &defaulted) ? owner : nullptr;
}

PACL Descriptor::rights() const {
    PACL rights = nullptr;
    BOOL present = FALSE;
    BOOL defaulted = FALSE;
    return GetSecurityDescriptorDacl(descriptor_, &present, &rights, &defaulted) ? rights : nullptr;
}

}  // namespace corvane::installer
