#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>
#include <vector>

#include <testing/temp_folder.h>

/// What the fuzz targets share. A target is one function that takes any bytes; it calls the library with them
/// and aborts with a message where something that must hold does not.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

/// Bytes in front of an input's file, from which a target draws the arguments of its calls.
constexpr std::size_t kArguments = 96;

/// Aborts with a message, which names the fault in a log, unless `holds`.
void must(bool holds, const char* message);

/// Takes arguments off the front of an input; zeros once it is used up.
class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

    template <class Number>
    Number take() {
        static_assert(std::is_trivially_copyable_v<Number>);
        Number number{};
        const std::size_t count = sizeof number < size_ ? sizeof number : size_;
        if (count > 0) std::memcpy(&number, data_, count);
        drop(count);
        return number;
    }

    /// A flag, from a byte of its own.
    bool flag() { return (take<std::uint8_t>() & 1) != 0; }

    /// Mostly a number from `low` to `high`, now and then any other.
    int around(int low, int high);

    /// A double of a kind that the next byte chooses: a special one, a likely position, or any at all.
    double real();

    /// The next bytes as an input of their own.
    Input part(std::size_t count);

    std::string rest() const { return size_ > 0 ? std::string(data_, data_ + size_) : std::string(); }
    bool empty() const { return size_ == 0; }

private:
    void drop(std::size_t count) {
        if (count == 0) return;
        data_ += count;
        size_ -= count;
    }

    const std::uint8_t* data_;
    std::size_t size_;
};

/// Reads what it is given, byte by byte, so that a tool which watches memory sees each of them used.
class Kept {
public:
    Kept() = default;
    ~Kept();
    Kept(const Kept&) = delete;
    Kept& operator=(const Kept&) = delete;

    void bytes(const void* data, std::size_t size);
    void text(const char* text) { bytes(text, std::strlen(text)); }
    template <class Number>
    void add(Number number) {
        static_assert(std::is_arithmetic_v<Number>);
        bytes(&number, sizeof number);
    }
    std::uint64_t sum() const { return sum_; }

private:
    std::uint64_t sum_ = 0;
};

/// Whether two numbers are the same bit by bit, NaN and the sign of 0 included.
inline bool same(double a, double b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

/// Whether they are the same, or both NaN of whatever kind.
inline bool equal_or_nan(double a, double b) {
    return a == b || (a != a && b != b);
}

/// What one input may still cost: every loop whose length an input chooses asks first.
class Budget {
public:
    explicit Budget(std::int64_t units) : left_(units) {}
    bool spend(std::int64_t units) {
        if (units > left_) return false;
        left_ -= units;
        return true;
    }

private:
    std::int64_t left_;
};

/// A folder for this process, removed when the process ends.
const TempFolder& folder();

}  // namespace fuzz
