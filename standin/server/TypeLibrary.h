#pragma once

#include <windows.h>

#include <oaidl.h>
#include <wrl/client.h>

#include <string>

namespace practice {

// The one id that clients know in advance: the user-interface object's interface.
inline constexpr IID userInterfaceId = {
    0x75B14699, 0xB5F4, 0x47F6, {0x98, 0xDC, 0x2E, 0x7B, 0x98, 0xF7, 0xE4, 0x6D}};

// What the server's own type library says. Both flavours are the same program; they differ in what
// is read here.
struct TypeLibrary {
    Microsoft::WRL::ComPtr<ITypeLib> library;
    Microsoft::WRL::ComPtr<ITypeInfo> classInfo;      // of the class that has the interface
    Microsoft::WRL::ComPtr<ITypeInfo> interfaceInfo;  // of the interface's dispatch side
    GUID libraryId{};
    WORD majorVersion = 0;
    WORD minorVersion = 0;
    LCID locale = 0;
    SYSKIND system{};
    CLSID classId{};
    std::wstring className;
    std::wstring programId;  // library name, dot, class name
    DISPID commandMember = 0;
    IID eventsId{};
    DISPID windowUpDownMember = 0;
};

// Reads the type library in the program file. Answers an HRESULT that tells whether that went well.
HRESULT ReadTypeLibrary(TypeLibrary& result);

}  // namespace practice
