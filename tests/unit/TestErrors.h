#pragma once

#include <gtest/gtest.h>

#include <utility>

#include "util/RuntimeError.h"

namespace corvane::test {

// The run-time error that a body raises; none at all is a failure of the test.
template <class Body>
RuntimeError ErrorOf(Body&& body) {
    try {
        std::forward<Body>(body)();
    } catch (const RuntimeError& error) {
        return error;
    }
    ADD_FAILURE() << "no run-time error was raised";
    return {};
}

}  // namespace corvane::test
