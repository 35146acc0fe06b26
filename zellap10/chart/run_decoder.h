#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>

/// The decoder of a scan line. With n bits per pixel a scan line is
///
///     line number    one byte or more, bit 7 set in all but the last; its value does not matter
///     runs           colour and length of each run, left to right, until the line is full
///
/// and a run, its length being one above its value, is
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

/// What every read past the end of the file gives: all bits of colour and value, and no continuation.
constexpr unsigned char kByteBehindEnd = 0x7F;

/// How colour and value share the first byte of a run.
struct RunCoding {
    unsigned run_mask;
    unsigned colour_mask;
    int colour_shift;
};

struct Run {
    unsigned char colour;
    std::uint32_t length;  ///< pixels, 1 to 2147483648; a longer one is held there
};

/// The bytes of a file in pieces, so that a byte costs neither a call nor a lock, and a line that begins
/// where the one before it ended no seek. Two bytes that begin a long run stand behind each piece, so that
/// looking ahead asks for no end.
class Pieces {
public:
    struct Span {
        const unsigned char* begin;
        const unsigned char* end;
    };

    /// @param end    offset at which the next reader will begin; reading ends there where it can, so that
    ///               going on needs no seek
    /// @param ahead  bytes to read at once where that offset does not lie ahead
    // cppcheck-suppress uninitMemberVar ; scratch, of which only what was written is read
    explicit Pieces(std::FILE* file, std::int32_t end = 0, std::int64_t ahead = 1)
        : file_(file), end_(end), ahead_(ahead) {}

    /// What is at hand from an offset on. An offset that no file has is its end.
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

    /// What follows, from where the file stands; never ends.
    Span next() {
        begin_ += count_;
        const std::int64_t size = end_ > begin_ ? std::min(end_ - begin_, kLargest) : ahead_;
        count_ = static_cast<std::int64_t>(std::fread(bytes_, 1, static_cast<std::size_t>(size), file_));
        if (count_ == 0) std::memset(bytes_, kByteBehindEnd, static_cast<std::size_t>(size));
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

/// Runs that stand side by side.
struct Runs {
    std::size_t bytes;
    std::int64_t length;  ///< pixels of all
};

/// The whole runs in the next eight bytes, the first of them lowest; none where one of them has three bytes
/// or more. Masks tell which bytes begin a run and which are the second of one; what they add to the length
/// is summed in lanes of 16 bits, and a multiplication adds up the lanes.
inline Runs runs_of(std::uint64_t bytes, const RunCoding& coding) {
    constexpr std::uint64_t kEach = UINT64_C(0x0101010101010101);
    constexpr std::uint64_t kEven = UINT64_C(0x00FF00FF00FF00FF);
    constexpr std::uint64_t kLanes = UINT64_C(0x0001000100010001);
    const std::uint64_t more = bytes >> kGroupBits & kEach;
    const std::uint64_t second = more << 8;
    if ((more & second) != 0) return {0, 0};
    const std::uint64_t cut = more >> 56;  // the last byte begins a run that ends behind it
    const std::uint64_t first = kEach ^ second ^ cut << 56;
    const std::uint64_t tops = bytes & first * coding.run_mask;
    const std::uint64_t high = tops & more * 0xFF;  // of two bytes
    const std::uint64_t low = (tops ^ high) + (bytes & second * kGroupMask) + first;
    const std::uint64_t sums =
        (low & kEven) + (low >> 8 & kEven) + (((high & kEven) + (high >> 8 & kEven)) << kGroupBits);
    return {static_cast<std::size_t>(8 - cut), static_cast<std::int64_t>(sums * kLanes >> 48)};
}

/// Bytes and runs out of pieces. It stands apart from them so that its two pointers can stay in registers.
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

    /// Most runs are one byte or two, as good as at random, so that a branch between the two would be guessed
    /// wrong a third of the time: it is arithmetic instead, which takes lines with runs of 20 pixels from 10
    /// to 4 ns a run.
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
        // A longer run, or one that the piece does not hold whole. Beyond this another group would pass 31
        // bits.
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

    /// Passes runs that hold fewer pixels than this together, as many as eight bytes at a time can tell, and
    /// gives how many pixels they hold.
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
