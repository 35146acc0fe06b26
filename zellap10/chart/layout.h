#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <memory>

#include <zellap10/platform/text_reader.h>

/// The layout of a chart file, for all who check one. Private; the functions are inline so that the library
/// and the plotter target can each compile them.
///
/// Numbers are big-endian; S is the size of the file.
///
///     offset   size         content
///     0        T            text part, without a byte 0x1A
///     T        1            0x1A
///     T + 1    1            skipped
///     T + 2    1            bits per pixel, 1 to 7
///     T + 3    as needed    scan lines, in any order, gaps between them
///     P        4 x height   line table: the offset of each scan line
///     S - 4    4            P
namespace zellap10::chart {

/// Closes the file when it goes out of scope.
struct FileCloser {
    void operator()(std::FILE* file) const { static_cast<void>(std::fclose(file)); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

constexpr int kOffsetBytes = 4;
constexpr std::int64_t kLargestFile = std::numeric_limits<std::int32_t>::max();

/// Why a chart file is refused.
enum class Refusal {
    kNone,
    kUnreadable,
    kTooLarge,      ///< offsets have 32 bits with a sign
    kTooSmall,      ///< no room for P
    kNoEndOfText,   ///< no 0x1A
    kEndsWithText,  ///< no bits per pixel
    kBitsPerPixel,  ///< outside 1 to 7
    kLineTable,     ///< not completely inside the file
};

struct Layout {
    Refusal refusal = Refusal::kNone;
    std::int64_t size = 0;
    int bits_per_pixel = 0;
    int lines = 0;            ///< 0 or more
    std::uint32_t table = 0;  ///< P; if there are no lines, it may be outside the file
};

inline std::uint32_t big_endian(const unsigned char* bytes) {
    return static_cast<std::uint32_t>(bytes[0]) << 24 | static_cast<std::uint32_t>(bytes[1]) << 16 |
           static_cast<std::uint32_t>(bytes[2]) << 8 | static_cast<std::uint32_t>(bytes[3]);
}

inline Refusal read_bits_per_pixel(std::FILE* file, int& bits_per_pixel) {
    std::rewind(file);
    unsigned char block[4096];
    for (std::size_t count; (count = std::fread(block, 1, sizeof block, file)) > 0;) {
        const void* end = std::memchr(block, platform::kEndOfText, count);
        if (end == nullptr) continue;
        const auto offset = static_cast<long>(static_cast<const unsigned char*>(end) - block) + 2;
        if (std::fseek(file, offset - static_cast<long>(count), SEEK_CUR) != 0) return Refusal::kUnreadable;
        const int byte = std::getc(file);
        if (byte == EOF) return std::ferror(file) != 0 ? Refusal::kUnreadable : Refusal::kEndsWithText;
        bits_per_pixel = byte;
        return byte >= 1 && byte <= 7 ? Refusal::kNone : Refusal::kBitsPerPixel;
    }
    return std::ferror(file) != 0 ? Refusal::kUnreadable : Refusal::kNoEndOfText;
}

/// Reads the layout and checks all of it, before anyone allocates memory for what the file claims. After a
/// refusal, only the fields that were read before are set.
///
/// @param height  lines, from the text part; below 0 counts as 0
inline Layout read_layout(std::FILE* file, int height) {
    Layout layout;
    const auto refused = [&layout](Refusal refusal) {
        layout.refusal = refusal;
        return layout;
    };
    if (std::fseek(file, 0, SEEK_END) != 0) return refused(Refusal::kUnreadable);
    layout.size = std::ftell(file);
    // On Windows, a size that a long cannot hold is -1.
    if (layout.size < 0 || layout.size > kLargestFile) return refused(Refusal::kTooLarge);
    if (layout.size < kOffsetBytes) return refused(Refusal::kTooSmall);

    const Refusal refusal = read_bits_per_pixel(file, layout.bits_per_pixel);
    if (refusal != Refusal::kNone) return refused(refusal);

    unsigned char bytes[kOffsetBytes];
    if (std::fseek(file, -kOffsetBytes, SEEK_END) != 0 ||
        std::fread(bytes, 1, sizeof bytes, file) != sizeof bytes) {
        return refused(Refusal::kUnreadable);
    }
    layout.table = big_endian(bytes);
    layout.lines = std::max(height, 0);
    const std::int64_t end = layout.table + std::int64_t{kOffsetBytes} * layout.lines;
    return layout.lines > 0 && end > layout.size ? refused(Refusal::kLineTable) : layout;
}

}  // namespace zellap10::chart
