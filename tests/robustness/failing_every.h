#pragma once

#include <atomic>

/// One allocation of so many by the program's operator new fails; 0 for none. Any thread may allocate.
extern std::atomic<unsigned> fails_every;
