// What code that the compiler makes calls upon, in the place of what its libraries bring: their
// stack protection loads Windows' cryptography for one number at every start, and their last words
// before a program ends are a tenth of its size, for a console that it does not have.

#include "platform/kit/Windows.h"

#include <cstdint>
#include <cstdlib>

// NOLINTBEGIN(clang-diagnostic-reserved-identifier): the names are the compiler's.

extern "C" {

// The compiler puts it between a function's buffers and its way back, and looks whether it is still
// there at the end.
std::uintptr_t __stack_chk_guard = 0;

// A buffer was written beyond: nothing of the program may run any more, no handler of exceptions
// either. What other compilers call __fastfail.
[[noreturn]] void __stack_chk_fail() {
    constexpr int stackCookieCheckFailure = 2;
    asm volatile("int $0x29" : : "c"(stackCookieCheckFailure));
    __builtin_unreachable();
}

}  // extern "C"

namespace __gnu_cxx {

// Where std::terminate ends unless the program says otherwise.
void __verbose_terminate_handler();
void __verbose_terminate_handler() {
    std::abort();
}

}  // namespace __gnu_cxx

// NOLINTEND(clang-diagnostic-reserved-identifier)

namespace {

// Before all other constructors. Made of what differs from run to run, where nobody sees it.
__attribute__((constructor(101), no_stack_protector)) void ChooseGuard() {
    FILETIME time;
    LARGE_INTEGER count;
    GetSystemTimeAsFileTime(&time);
    QueryPerformanceCounter(&count);
    std::uint64_t mixed = static_cast<std::uint64_t>(count.QuadPart) ^
                          ULARGE_INTEGER {
                              { time.dwLowDateTime, time.dwHighDateTime }
                          }.QuadPart ^
                          (std::uint64_t{GetCurrentProcessId()} << 32) ^ GetCurrentThreadId() ^
                          reinterpret_cast<std::uintptr_t>(&mixed);
    mixed *= 0x9E3779B97F4A7C15U;  // every bit reaches the upper ones
    // A text that is copied ends at its zero, and cannot bring the guard along.
    __stack_chk_guard = static_cast<std::uintptr_t>(mixed >> (64 - 8 * sizeof(std::uintptr_t))) &
                        ~std::uintptr_t{0xFF};
}

}  // namespace
