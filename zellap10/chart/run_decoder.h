#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>

/// The decoder of a scan line. With n bits per pixel, a scan line is
///
///     line number    one byte or more, bit 7 set in all but the last; its value is ignored
///     runs           colour and length of each run, left to right, until the line is full
///
/// and a run, whose length is its value plus one, is
///
///     first byte     bit 7          another byte follows
///                    next n bits    colour index                           ColourMask, ColourShift
///                    last 7 - n     top bits of the value                  RunMask
///     further byte   bit 7          another byte follows
///                    bits 6 to 0    the next 7 bits of the value
namespace zellap10::chart {

constexpr unsigned kContinued = 0x80;
constexpr unsigned kGroupMask = 0x7F;
constexpr int kGroupBits = 7;

/// Every byte past the end of the file: all bits of colour and value, and no continuation.
constexpr unsigned char kBytePastEnd = 0x7F;

/// How colour and value share the first byte of a run.
struct RunCoding {
    unsigned run_mask;
    unsigned colour_mask;
    int colour_shift;
};

struct Run {
    unsigned char colour;
    std::uint32_t length;  ///< pixels, 1 to 2147483648; longer runs are cut to that
};

/// Reads a file in pieces, so that a byte costs no call and no lock, and a line that begins at the end of the
/// previous one costs no seek. Two bytes that begin a long run follow each piece, so that looking ahead needs
/// no test for its end.
class Pieces {
public:
    struct Span {
        const unsigned char* begin;
        const unsigned char* end;
    };

    /// @param end    offset at which the next reader will begin; reading stops there if possible, so that the
    ///               next reader needs no seek
    /// @param ahead  bytes to read at once if that offset is not ahead
    // cppcheck-suppress uninitMemberVar ; scratch, read only after it was written
    explicit Pieces(std::FILE* file, std::int32_t end = 0, std::int64_t ahead = 1)
        : file_(file), end_(end), ahead_(ahead) {}

    /// The bytes in memory from an offset on. An offset outside the file counts as its end.
    Span at(std::int32_t offset) {
        if (offset >= begin_ && offset < begin_ + count_)
            return {bytes_ + (offset - begin_), bytes_ + count_};
        // Unlike ftell, a seek always asks the system.
        if (offset < 0 || (std::ftell(file_) != offset && std::fseek(file_, offset, SEEK_SET) != 0)) {
            static_cast<void>(std::fseek(file_, 0, SEEK_END));
        }
        begin_ = offset;
        count_ = 0;
        return next();
    }

    /// The next bytes, from the current position of the file; without an end.
    Span next() {
        begin_ += count_;
        const std::int64_t size = end_ > begin_ ? std::min(end_ - begin_, kLargest) : ahead_;
        count_ = static_cast<std::int64_t>(std::fread(bytes_, 1, static_cast<std::size_t>(size), file_));
        if (count_ == 0) std::memset(bytes_, kBytePastEnd, static_cast<std::size_t>(size));
        const std::int64_t count = count_ > 0 ? count_ : size;
        bytes_[count] = bytes_[count + 1] = kContinued;
        return {bytes_, bytes_ + count};
    }

private:
    static constexpr std::int64_t kLargest = 16384;

    std::FILE* file_;
    std::int64_t end_;
    std::int64_t ahead_;
    std::int64_t begin_ = 0;  // offset of the piece
    std::int64_t count_ = 0;  // bytes of the file in it
    unsigned char bytes_[kLargest + 2];
};

/// Consecutive runs.
struct Runs {
    std::size_t bytes;
    std::int64_t length;  ///< pixels of all runs
};

/// The complete runs in the next eight bytes, the first byte lowest; none if one of them has three bytes or
/// more. Masks select the first and the second bytes of runs; their parts of the length are added in lanes of
/// 16 bits, and a multiplication adds the lanes.
inline Runs runs_of(std::uint64_t bytes, const RunCoding& coding) {
    constexpr std::uint64_t kEach = UINT64_C(0x0101010101010101);
    constexpr std::uint64_t kEven = UINT64_C(0x00FF00FF00FF00FF);
    constexpr std::uint64_t kLanes = UINT64_C(0x0001000100010001);
    const std::uint64_t more = bytes >> kGroupBits & kEach;
    const std::uint64_t second = more << 8;
    if ((more & second) != 0) return {0, 0};
    const std::uint64_t cut = more >> 56;  // the last byte begins a run that ends after it
    const std::uint64_t first = kEach ^ second ^ cut << 56;
    const std::uint64_t tops = bytes & first * coding.run_mask;
    const std::uint64_t high = tops & more * 0xFF;  // of two bytes
    const std::uint64_t low = (tops ^ high) + (bytes & second * kGroupMask) + first;
    const std::uint64_t sums =
        (low & kEven) + (low >> 8 & kEven) + (((high & kEven) + (high >> 8 & kEven)) << kGroupBits);
    return {static_cast<std::size_t>(8 - cut), static_cast<std::int64_t>(sums * kLanes >> 48)};
}

/// Bytes and runs from pieces. A class of its own, so that its two pointers stay in registers.
class PieceBytes {
public:
    PieceBytes(Pieces& pieces, Pieces::Span span) : pieces_(pieces), span_(span) {}

    unsigned next() {
        if (span_.begin == span_.end) span_ = pieces_.next();
        return *span_.begin++;
    }

    void skip_line_number() {
        while (next() >= kContinued) {
        }
    }

    /// Most runs have one byte or two, almost at random, so a branch between the two would be mispredicted in
    /// a third of the cases. Arithmetic instead takes lines with runs of 20 pixels from 10 to 4 ns per run.
    Run next_run(const RunCoding& coding) {
        const unsigned first = span_.begin[0];
        const unsigned second = span_.begin[1];
        const unsigned more = first >> kGroupBits;
        if ((more & second >> kGroupBits) == 0) {
            const unsigned low = second & kGroupMask & (0U - more);
            const unsigned value = (first & coding.run_mask) << kGroupBits * more | low;
            span_.begin += 1 + more;
            return {static_cast<unsigned char>((first & coding.colour_mask) >> coding.colour_shift),
                    value + 1};
        }
        // A longer run, or one that is not completely in the piece. Above this limit, one more group would
        // need over 31 bits.
        constexpr std::uint32_t kLongestToGrow = 0x7FFFFFFF >> kGroupBits;

        unsigned byte = next();
        const unsigned colour = (byte & coding.colour_mask) >> coding.colour_shift;
        std::uint32_t value = byte & coding.run_mask;
        while (byte >= kContinued) {
            byte = next();
            value = value <= kLongestToGrow ? value << kGroupBits | (byte & kGroupMask) : 0x7FFFFFFF;
        }
        return {static_cast<unsigned char>(colour), value + 1};
    }

    /// Skips runs in steps of eight bytes, as long as their sum stays below `pixels`.
    ///
    /// @return  their pixels
    std::int64_t pass_runs(std::int64_t pixels, const RunCoding& coding) {
        std::int64_t passed = 0;
        while (span_.end - span_.begin >= 8) {
            const auto byte = [this](int i) { return std::uint64_t{span_.begin[i]} << 8 * i; };
            const Runs runs = runs_of(
                byte(0) | byte(1) | byte(2) | byte(3) | byte(4) | byte(5) | byte(6) | byte(7), coding);
            if (runs.bytes == 0 || passed + runs.length >= pixels) break;
            passed += runs.length;
            span_.begin += runs.bytes;
        }
        return passed;
    }

private:
    Pieces& pieces_;
    Pieces::Span span_;
};

}  // namespace zellap10::chart
