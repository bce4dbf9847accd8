#pragma once

#include <cstddef>

// The test program's own operator new and delete: they count, and fail on demand. What a C library
// takes by malloc is not seen.
namespace corvane::test::allocations {

enum class Failing { None, One, AllFrom };

// From now on until Stop, counted from 0: that one allocation fails, or it and all after it.
void Start(Failing failing, std::size_t which);
// The number of allocations that were asked for since Start.
std::size_t Stop();

// How many blocks are in use.
[[nodiscard]] std::size_t Live();

}  // namespace corvane::test::allocations
