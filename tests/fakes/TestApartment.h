#pragma once

// MSXML wants a COM apartment on the thread that reads replies.
#ifdef _WIN32

#include "platform/kit/ComApartment.h"

namespace corvane::test {
using TestApartment = ComApartment;
}

#else

namespace corvane::test {
struct TestApartment {};
}  // namespace corvane::test

#endif
