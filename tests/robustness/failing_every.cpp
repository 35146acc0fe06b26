#include "failing_every.h"

#include <cstdlib>
#include <new>

std::atomic<unsigned> fails_every{0};

namespace {

std::atomic<unsigned> allocations{0};

}  // namespace

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    const unsigned every = fails_every;
    return every != 0 && ++allocations % every == 0 ? nullptr : std::malloc(size > 0 ? size : 1);
}

void* operator new(std::size_t size) {
    void* const block = operator new(size, std::nothrow);
    if (block == nullptr) throw std::bad_alloc();
    return block;
}

void operator delete(void* block) noexcept {
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}
