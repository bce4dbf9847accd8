#pragma once

#include <span>

#include "check/CheckSurroundings.h"
#include "check/wiring/Findings.h"

namespace corvane {

// Links that are looked at one after the other; the others do not wait for them.
struct LinkGroup {
    std::span<const Link> links;
    void (*look)(const CheckSurroundings&, Findings&);
};

extern const LinkGroup threeCXLinks;     // the program, and 3CX with it
extern const LinkGroup goldMineLinks;    // GoldMine as it runs
extern const LinkGroup recordingsLinks;  // the recordings folder, which may be a server's
extern const LinkGroup userLinks;        // this user's settings, log and running instances

}  // namespace corvane
