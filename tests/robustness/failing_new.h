#pragma once

#include <atomic>

/// Replaces operator new and newlocale of the program with functions that fail on request.
namespace failing_new {

/// One allocation of so many fails, by any thread; 0 for none.
extern std::atomic<unsigned> fails_every;

/// The number of allocated blocks.
long live();

/// The bytes requested since the program started.
unsigned long long asked();

/// While an object exists, the n-th allocation from now fails, counted from 1, and with `all_after` all later
/// ones. The throwing operator new throws; the other one and newlocale return null.
class Scope {
public:
    Scope(long n, bool all_after);
    ~Scope();
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

    /// Whether an allocation has failed.
    static bool has_failed();
};

}  // namespace failing_new
