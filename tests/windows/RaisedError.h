#pragma once

#include <gtest/gtest.h>

#include <utility>

#include "util/RuntimeError.h"

namespace corvane::test {

// The run-time error that the action raises; its absence is a failure.
template <class Action>
[[nodiscard]] RuntimeError RaisedBy(Action&& action) {
    try {
        std::forward<Action>(action)();
    } catch (const RuntimeError& error) {
        return error;
    }
    ADD_FAILURE() << "no error was raised";
    return {};
}

}  // namespace corvane::test
