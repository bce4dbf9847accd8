#pragma once

#include <string>

#include "platform/kit/Windows.h"

#include <aclapi.h>

namespace corvane::installer {

// What somebody could do to an object that is no administrator.
namespace Harm {
inline constexpr ACCESS_MASK exchange =
    DELETE | FILE_DELETE_CHILD | WRITE_DAC | WRITE_OWNER | GENERIC_ALL;
inline constexpr ACCESS_MASK write = exchange | GENERIC_WRITE | FILE_WRITE_DATA | FILE_APPEND_DATA |
                                     FILE_WRITE_EA | FILE_WRITE_ATTRIBUTES;
}  // namespace Harm

// Whether the object belongs to the system, to the administrators, or to whom this process makes
// its own files for, and lets nobody else do any of that to it.
[[nodiscard]] bool IsGuarded(PSID owner, PACL rights, ACCESS_MASK harm);

// A security descriptor from its text.
class Descriptor {
public:
    explicit Descriptor(const wchar_t* text);
    ~Descriptor();
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    [[nodiscard]] SECURITY_ATTRIBUTES* attributes() { return &attributes_; }
    [[nodiscard]] PSID owner() const;
    [[nodiscard]] PACL rights() const;

private:
    PSECURITY_DESCRIPTOR descriptor_ = nullptr;
    SECURITY_ATTRIBUTES attributes_{sizeof(SECURITY_ATTRIBUTES), nullptr, FALSE};
};

// Users read and run what is there.
inline constexpr const wchar_t* programFolderRights =
    L"O:BAG:BAD:PAI(A;OICI;FA;;;SY)(A;OICI;FA;;;BA)(A;OICI;0x1200a9;;;BU)";
// Users find the log, and make nothing beside it.
inline constexpr const wchar_t* logFolderRights =
    L"O:BAG:BAD:PAI(A;OICI;FA;;;SY)(A;OICI;FA;;;BA)(A;CI;0x1200a9;;;BU)";
// Every user's lines arrive: users read and append.
inline constexpr const wchar_t* logFileRights =
    L"O:BAG:BAD:PAI(A;;FA;;;SY)(A;;FA;;;BA)(A;;0x12008d;;;BU)";

}  // namespace corvane::installer
