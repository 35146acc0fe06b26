#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>

/// The decoder of a scan line, over a source of bytes. With n bits per pixel a scan line is
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

/// Takes a run off a source of bytes. The source has
///
///     unsigned next()                the next byte; never ends
///     bool holds_two()               whether the next two bytes can be looked at
///     unsigned ahead(std::size_t)    one of them, 0 or 1
///     void drop(std::size_t)         passes 1 or 2 bytes that were looked at
///
/// Most runs are one byte or two, as good as at random, so that a branch between the two would be guessed
/// wrong a third of the time: it is arithmetic instead, which takes lines with runs of 20 pixels from 10 to 4
/// ns a run.
template <class Bytes>
inline Run next_run(Bytes& bytes, const RunCoding& coding) {
    if (bytes.holds_two()) {
        const unsigned first = bytes.ahead(0);
        const unsigned second = bytes.ahead(1);
        const unsigned more = first >> kGroupBits;
        if ((more & second >> kGroupBits) == 0) {
            const unsigned low = second & kGroupMask & (0U - more);
            const unsigned value = (first & coding.run_mask) << kGroupBits * more | low;
            bytes.drop(1 + more);
            return {static_cast<unsigned char>((first & coding.colour_mask) >> coding.colour_shift),
                    value + 1};
        }
    }
    // Beyond this another group would pass 31 bits.
    constexpr std::uint32_t kLongestToGrow = 0x7FFFFFFF >> kGroupBits;

    unsigned byte = bytes.next();
    const unsigned colour = (byte & coding.colour_mask) >> coding.colour_shift;
    std::uint32_t value = byte & coding.run_mask;
    while (byte >= kContinued) {
        byte = bytes.next();
        value = value <= kLongestToGrow ? value << kGroupBits | (byte & kGroupMask) : 0x7FFFFFFF;
    }
    return {static_cast<unsigned char>(colour), value + 1};
}

template <class Bytes>
inline void skip_line_number(Bytes& bytes) {
    while (bytes.next() >= kContinued) {
    }
}

/// Bytes straight from a file, which stands behind the last one taken.
class FileBytes {
public:
    explicit FileBytes(std::FILE* file) : file_(file) {}

    unsigned next() {
        const int byte = std::getc(file_);
        return byte != EOF ? static_cast<unsigned>(byte) : kByteBehindEnd;
    }
    // Looking ahead in a file would move it; a run is taken byte by byte.
    static constexpr bool holds_two() { return false; }
    static constexpr unsigned ahead(std::size_t) { return kByteBehindEnd; }
    static constexpr void drop(std::size_t) {}

private:
    std::FILE* file_;
};

/// Scratch for one call: reads a file in blocks, so that a byte costs neither a call nor a lock.
class Blocks {
public:
    struct Span {
        const unsigned char* begin;
        const unsigned char* end;
    };

    /// @param expected  bytes that the caller expects to need; reading more than a short line has costs the
    ///                  next line a seek outside the file's buffer
    Blocks(std::FILE* file, std::int64_t expected) : file_(file) {
        if (expected > 0 && expected < static_cast<std::int64_t>(sizeof bytes_)) {
            size_ = static_cast<std::size_t>(expected);
        }
    }

    Span next() {
        std::size_t count = ended_ ? 0 : std::fread(bytes_, 1, size_, file_);
        if (count == 0) {
            ended_ = true;
            count = sizeof bytes_;
            std::memset(bytes_, kByteBehindEnd, count);
        }
        size_ = sizeof bytes_;
        return {bytes_, bytes_ + count};
    }

private:
    std::FILE* file_;
    bool ended_ = false;
    std::size_t size_ = sizeof bytes_;
    unsigned char bytes_[4096];
};

/// Bytes out of blocks. It stands apart from them so that its two pointers can stay in registers.
class BlockBytes {
public:
    explicit BlockBytes(Blocks& blocks) : blocks_(blocks) {}

    unsigned next() {
        if (span_.begin == span_.end) span_ = blocks_.next();
        return *span_.begin++;
    }
    bool holds_two() const { return span_.end - span_.begin >= 2; }
    unsigned ahead(std::size_t i) const { return span_.begin[i]; }
    void drop(std::size_t count) { span_.begin += count; }

private:
    Blocks& blocks_;
    Blocks::Span span_{nullptr, nullptr};
};

/// Sets `length` pixels, at most `room` of them. What lies behind them in the room may change, so that a
/// short run, as nearly all are, is one store of a fixed size and no guess about its length.
inline void fill_run(unsigned char* dest, std::size_t length, std::size_t room, unsigned char colour) {
    constexpr std::size_t kShort = 32;
    if (room < kShort) {
        std::memset(dest, colour, length);
        return;
    }
    std::memset(dest, colour, kShort);
    if (length > kShort) std::memset(dest + kShort, colour, length - kShort);
}

/// Pixels on their way to a caller who must see none but those of whole runs: they are collected here, where
/// there is room to spare behind them, and handed on in large pieces.
class PixelBlock {
public:
    // cppcheck-suppress uninitMemberVar ; scratch, of which only what was written is read
    explicit PixelBlock(unsigned char* dest) : dest_(dest) {}

    void add(const Run& run) {
        if (run.length > kSize - used_) {
            hand_on();
            if (run.length > kSize) {
                std::memset(dest_, run.colour, run.length);
                dest_ += run.length;
                return;
            }
        }
        fill_run(pixels_ + used_, run.length, sizeof pixels_ - used_, run.colour);
        used_ += run.length;
    }

    void hand_on() {
        if (used_ == 0) return;  // a line without pixels may have no room
        std::memcpy(dest_, pixels_, used_);
        dest_ += used_;
        used_ = 0;
    }

private:
    static constexpr std::size_t kSize = 2048;
    unsigned char* dest_;
    std::size_t used_ = 0;
    unsigned char pixels_[kSize + 64];
};

}  // namespace zellap10::chart
