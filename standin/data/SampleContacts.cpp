#include "data/SampleContacts.h"

#include <windows.h>

namespace practice {

std::string SampleContacts() {
    const HRSRC resource = FindResourceW(nullptr, L"CONTACTS", L"SQL");
    if (!resource)
        return {};
    const HGLOBAL loaded = LoadResource(nullptr, resource);
    return std::string(static_cast<const char*>(LockResource(loaded)),
                       SizeofResource(nullptr, resource));
}

}  // namespace practice
