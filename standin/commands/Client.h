#pragma once

#include <set>
#include <string>

namespace practice {

// What GoldMine remembers of one connected client.
struct Client {
    std::set<std::wstring> watchedWindows;  // by RegisterWindowUpDown
    bool recordObjectSet = false;           // RecordObj's steps, which must come in order
    bool recordOrderSet = false;
};

}  // namespace practice
