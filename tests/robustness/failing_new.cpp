#include "failing_new.h"

#include <atomic>
#include <cstdlib>
#include <new>

#if !defined(_WIN32)
#include <dlfcn.h>
#include <locale.h>
#endif

namespace {

// Any thread may allocate.
std::atomic<long> live_blocks{0};
std::atomic<unsigned long long> bytes_asked{0};
std::atomic<unsigned> allocations{0};
std::atomic<long> countdown{0};  // until the allocation that fails, 0 for none
std::atomic<bool> fail_on{false};
std::atomic<bool> failed{false};

bool fails_now() {
    const unsigned every = failing_new::fails_every;
    if (every != 0) return ++allocations % every == 0;
    const bool fails = (failed && fail_on) || (countdown > 0 && --countdown == 0);
    if (fails) failed = true;
    return fails;
}

void* allocate(std::size_t size) noexcept {
    bytes_asked += size;
    void* block = fails_now() ? nullptr : std::malloc(size > 0 ? size : 1);
    if (block != nullptr) ++live_blocks;
    return block;
}

void* allocate_or_throw(std::size_t size) {
    void* block = allocate(size);
    if (block == nullptr) throw std::bad_alloc();
    return block;
}

void release(void* block) noexcept {
    if (block != nullptr) --live_blocks;
    std::free(block);
}

}  // namespace

namespace failing_new {

std::atomic<unsigned> fails_every{0};

long live() {
    return live_blocks;
}

unsigned long long asked() {
    return bytes_asked;
}

Scope::Scope(long n, bool all_after) {
    countdown = n;
    fail_on = all_after;
    failed = false;
}

Scope::~Scope() {
    countdown = 0;
    fail_on = false;
}

bool Scope::has_failed() {
    return failed;
}

}  // namespace failing_new

#if !defined(_WIN32)
extern "C" locale_t newlocale(int categories, const char* name, locale_t base) noexcept {
    using Function = locale_t (*)(int, const char*, locale_t);
    static const auto of_the_system = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "newlocale"));
    return fails_now() ? nullptr : of_the_system(categories, name, base);
}
#endif

void* operator new(std::size_t size) {
    return allocate_or_throw(size);
}
void* operator new[](std::size_t size) {
    return allocate_or_throw(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return allocate(size);
}
void operator delete(void* block) noexcept {
    release(block);
}
void operator delete[](void* block) noexcept {
    release(block);
}
void operator delete(void* block, std::size_t) noexcept {
    release(block);
}
void operator delete[](void* block, std::size_t) noexcept {
    release(block);
}
