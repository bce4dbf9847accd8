#pragma once

#include "platform/kit/Windows.h"

#include <optional>

#include <objidl.h>

namespace corvane {

// The thread's single-threaded apartment, kept polite by a message filter: a busy server is tried
// again every 250 ms for ten seconds, and window messages are served while a call is out.
class ComApartment {
public:
    // Raises when COM cannot be had.
    ComApartment();
    ~ComApartment();
    ComApartment(const ComApartment&) = delete;
    ComApartment& operator=(const ComApartment&) = delete;
};

// The apartment of a run that may end without COM: most do, and to make one takes as long as all
// else that they do.
class ComWhenNeeded {
public:
    // The first call makes the apartment, which stays. Raises when COM cannot be had.
    void Enter() {
        if (!apartment_)
            apartment_.emplace();
    }

private:
    std::optional<ComApartment> apartment_;
};

}  // namespace corvane
