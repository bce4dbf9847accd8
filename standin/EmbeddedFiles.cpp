#include "EmbeddedFiles.h"

#include <windows.h>

#include "ResourceIds.h"

namespace practice {

std::string SampleContacts() {
    const HRSRC resource =
        FindResourceW(nullptr, MAKEINTRESOURCEW(IDR_CONTACTS), MAKEINTRESOURCEW(RT_PRACTICE_FILE));
    if (resource == nullptr) {
        return {};
    }
    const HGLOBAL loaded = LoadResource(nullptr, resource);
    return std::string(static_cast<const char*>(LockResource(loaded)),
                       SizeofResource(nullptr, resource));
}

}  // namespace practice
