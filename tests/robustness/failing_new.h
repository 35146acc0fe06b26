#pragma once

/// The allocations of this program, through its own operator new and newlocale, which fail when they are told
/// to.
namespace failing_new {

/// Blocks that are allocated now.
long live();

/// Bytes that were asked for so far.
unsigned long long asked();

/// Makes allocations fail as long as it lives: the n-th from now on, counted from 1, and with `all_after`
/// every later one too. A throwing operator new throws, one that must not throw and newlocale give null.
class Scope {
public:
    Scope(long n, bool all_after);
    ~Scope();
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

    /// Whether there were as many allocations that one has failed.
    static bool has_failed();
};

}  // namespace failing_new
