#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>
#include <vector>

#include <testing/temp_folder.h>

/// Shared by the fuzz targets. A target is a function that calls the library with any bytes. It aborts with a
/// message if a check fails.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

/// The bytes before the file in an input; they provide the arguments of the calls.
constexpr std::size_t kArguments = 96;

/// Aborts with a message unless `holds`.
void must(bool holds, const char* message);

/// Takes arguments from the front of an input; zeros after its end.
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

    /// A flag, from one byte.
    bool flag() { return (take<std::uint8_t>() & 1) != 0; }

    /// A number from `low` to `high`, sometimes any other.
    int around(int low, int high);

    /// A double. The next byte selects a special value, a likely position or any number.
    double real();

    /// The next bytes as a separate input.
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

/// Reads every byte that it gets, so that a memory checker sees each of them used.
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

/// Whether two numbers have the same bits, including NaN and the sign of 0.
inline bool same(double a, double b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

/// Whether two numbers are equal, or both NaN.
inline bool equal_or_nan(double a, double b) {
    return a == b || (a != a && b != b);
}

/// Limits the time for one input. Loops whose length depends on the input ask it first.
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
