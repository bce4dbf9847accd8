#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

#include <windows.h>

extern "C" std::uintptr_t __stack_chk_guard;

namespace corvane::test {
namespace {

TEST(StackGuardTest, GuardIsChosenAndEndsCopiedTexts) {
    EXPECT_NE(__stack_chk_guard, 0u);
    EXPECT_EQ(__stack_chk_guard & 0xFF, 0u);
}

// This file is compiled with the protection.
void WriteBeyondABuffer(std::size_t size) {
    char buffer[8];
    std::memset(buffer, 'x', size);
}

LONG WINAPI NotAsked(EXCEPTION_POINTERS*) {
    ExitProcess(1);
}

TEST(StackGuardTest, OverwrittenStackEndsTheProgramAtOnce) {
    const auto overflow = [&] {
        SetUnhandledExceptionFilter(&NotAsked);
        WriteBeyondABuffer(64);
    };
    constexpr auto stackBufferOverrun = static_cast<int>(0xC0000409);
    EXPECT_EXIT(overflow(), testing::ExitedWithCode(stackBufferOverrun), "");
}

}  // namespace
}  // namespace corvane::test
