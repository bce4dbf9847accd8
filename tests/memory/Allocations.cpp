#include "Allocations.h"

#include <cstdlib>
#include <new>

namespace {

using corvane::test::allocations::Failing;

Failing failing = Failing::None;
std::size_t failingOne = 0;
std::size_t asked = 0;
std::size_t live = 0;

void* Allocate(std::size_t size) noexcept {
    const std::size_t number = asked++;
    if ((failing == Failing::One && number == failingOne) ||
        (failing == Failing::AllFrom && number >= failingOne)) {
        return nullptr;
    }
    void* block = std::malloc(size > 0 ? size : 1);
    live += block ? 1 : 0;
    return block;
}

void Free(void* block) noexcept {
    live -= block ? 1 : 0;
    std::free(block);
}

}  // namespace

namespace corvane::test::allocations {

void Start(Failing how, std::size_t which) {
    failing = how;
    failingOne = which;
    asked = 0;
}

std::size_t Stop() {
    failing = Failing::None;
    return asked;
}

std::size_t Live() {
    return live;
}

}  // namespace corvane::test::allocations

// Those for arrays and with a size call these. Nothing here is aligned beyond what malloc does.
void* operator new(std::size_t size) {
    if (void* block = Allocate(size))
        return block;
    throw std::bad_alloc();
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return Allocate(size);
}
void operator delete(void* block) noexcept {
    Free(block);
}
void operator delete(void* block, std::size_t) noexcept {
    Free(block);
}
