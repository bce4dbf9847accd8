#pragma once

#include "platform/kit/Windows.h"

#include <objidl.h>
#include <wrl/client.h>

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

}  // namespace corvane
