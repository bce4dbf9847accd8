#pragma once

#include <string>

#include "platform/kit/Windows.h"

namespace corvane {

// The place of a file that the program makes where every user may make one: the file and the two
// folders around it. Somebody else may have put a link under one of these names; what stands above
// belongs to the administrator, who may have moved it. A check raises error 70 for a place
// elsewhere, and lets pass where the system cannot tell.
class OwnPlace {
public:
    explicit OwnPlace(const std::wstring& path);

    // Before a file is made there.
    void CheckFolder() const;
    void CheckFile(HANDLE file) const;

private:
    std::wstring path_;
    std::wstring place_;  // where that is in truth; empty where it cannot be told
};

}  // namespace corvane
