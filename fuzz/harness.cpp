#include "harness.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <limits>

namespace fuzz {

namespace {

// Never read; volatile, so that the compiler keeps the computation.
volatile std::uint64_t kept;

// Values at which the code branches: ends of ranges, poles, seams and neighbours of a split.
constexpr double kSpecial[] = {
    0.0,
    -0.0,
    1.0,
    -1.0,
    90.0,
    -90.0,
    180.0,
    -180.0,
    360.0,
    0.5,
    1e-12,
    1e-160,
    -1e-160,
    1e-308,
    5e-324,
    1e160,
    -1e160,
    1e308,
    -1e308,
    2147483647.0,
    -2147483648.0,
    4294967296.0,
    std::numeric_limits<double>::max(),
    std::numeric_limits<double>::lowest(),
    std::numeric_limits<double>::infinity(),
    -std::numeric_limits<double>::infinity(),
    std::numeric_limits<double>::quiet_NaN(),
    1.5707963267948966,
    3.14159265359,
    270.0,
    89.99999999999,
    179.9999999,
};

}  // namespace

void must(bool holds, const char* message) {
    if (holds) return;
    std::fprintf(stderr, "\nMUST HOLD: %s\n", message);
    std::abort();
}

int Input::around(int low, int high) {
    const auto raw = take<std::int32_t>();
    if ((raw & 7) == 7 || high < low) return raw;
    const std::int64_t count = static_cast<std::int64_t>(high) - low + 1;
    return static_cast<int>(low + ((static_cast<std::int64_t>(raw) & 0x7FFFFFFF) >> 3) % count);
}

double Input::real() {
    constexpr int kSpecialCount = sizeof kSpecial / sizeof *kSpecial;
    const int kind = take<std::uint8_t>();
    if (kind < kSpecialCount) return kSpecial[kind];
    if (kind < 96) return take<double>();
    if (kind < 160) return take<std::int32_t>() / 10000000.0;  // degrees, a little past 180
    if (kind < 208) return take<std::int16_t>();
    return take<std::int32_t>() * (kind < 232 ? 0.01 : 1.0);
}

Input Input::part(std::size_t count) {
    const Input front(data_, std::min(count, size_));
    drop(front.size_);
    return front;
}

Kept::~Kept() {
    kept = sum_;
}

void Kept::bytes(const void* data, std::size_t size) {
    const auto* at = static_cast<const unsigned char*>(data);
    for (std::size_t i = 0; i < size; ++i) {
        // The branch makes a memory checker report an uninitialized byte here.
        if (at[i] == 0) ++sum_;
        sum_ = (sum_ << 7 | sum_ >> 57) ^ at[i];
    }
}

const TempFolder& folder() {
    static const TempFolder own;
    return own;
}

}  // namespace fuzz
