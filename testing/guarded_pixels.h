#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

/// The initial value of every byte. No pixel has it, since a colour index is below 128.
constexpr unsigned char kUntouched = 0xEE;

/// A buffer for pixels with a guard on both sides.
class GuardedPixels {
public:
    explicit GuardedPixels(std::size_t size) : size_(size), bytes_(size + 2 * kGuard, kUntouched) {}

    unsigned char* data() { return bytes_.data() + kGuard; }
    const unsigned char* data() const { return bytes_.data() + kGuard; }
    std::size_t size() const { return size_; }
    std::vector<int> pixels() const { return {data(), data() + size_}; }

    bool guards_untouched() const { return all_untouched(bytes_.data(), data()) && untouched_from(size_); }
    /// Whether the pixels from `first` on and both guards are unchanged.
    bool untouched_from(std::size_t first) const {
        return all_untouched(bytes_.data(), data()) &&
               all_untouched(data() + first, bytes_.data() + bytes_.size());
    }
    bool untouched() const { return untouched_from(0); }

private:
    static bool all_untouched(const unsigned char* begin, const unsigned char* end) {
        return std::all_of(begin, end, [](unsigned char byte) { return byte == kUntouched; });
    }

    static constexpr std::size_t kGuard = 64;
    std::size_t size_;
    std::vector<unsigned char> bytes_;
};
