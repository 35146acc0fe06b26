#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <new>

#include <zellap10/chart/zellap.h>

namespace {

// The sums of red, green and blue are kept in three lanes of one word, 21 bits each: 8224 times 255 still
// fits.
constexpr int kLaneBits = 21;
constexpr std::uint64_t kLaneMask = (UINT64_C(1) << kLaneBits) - 1;
constexpr std::int64_t kLanePixels = 8224;
static_assert(kLanePixels * 255 <= static_cast<std::int64_t>(kLaneMask), "a lane holds its pixels");
static_assert(kLanePixels * 8 < INT64_C(1) << 17, "the reciprocal is exact");

using LaneTable = std::array<std::uint64_t, 256>;

LaneTable lanes_of(const LOGPALETTE256& palette) {
    LaneTable table;
    for (std::size_t i = 0; i < table.size(); ++i) {
        const PALETTEENTRY& colour = palette.palPalEntry[i];
        table[i] = colour.peRed | static_cast<std::uint64_t>(colour.peGreen) << kLaneBits |
                   static_cast<std::uint64_t>(colour.peBlue) << 2 * kLaneBits;
    }
    return table;
}

// The lines that a row of blocks is made of, and the blocks' size.
struct BlockRow {
    const unsigned char* const* lines;
    std::int64_t x_factor;
    std::int64_t y_factor;
    std::int64_t count;  // blocks
};

// Mean to the upper 5 bits of a channel, as the factor 8 brings it there in the same division. One reciprocal
// for all the blocks of a line takes the place of three divisions a block: for sums below 2^21 and a divisor
// below 2^17, sum x reciprocal / 2^40 passes sum / divisor by less than 2^-19, too little to reach the next
// whole number.
constexpr int kReciprocalBits = 40;

// Blocks that the lanes hold. kXFactor is the x factor, or 0 to take it from the row: known beforehand, it
// halves the time of the narrow blocks.
template <int kXFactor>
void reduce_in_lanes(const BlockRow& row, const LaneTable& table, const unsigned char* index,
                     unsigned char* dest) {
    const std::int64_t x_factor = kXFactor > 0 ? kXFactor : row.x_factor;
    const auto divisor = static_cast<std::uint64_t>(x_factor * row.y_factor * 8);
    const std::uint64_t reciprocal = (UINT64_C(1) << kReciprocalBits) / divisor + 1;
    const auto mean = [reciprocal](std::uint64_t sum) { return sum * reciprocal >> kReciprocalBits; };
    for (std::int64_t o = 0; o < row.count; ++o) {
        std::uint64_t lanes = 0;
        for (std::int64_t y = 0; y < row.y_factor; ++y) {
            const unsigned char* pixels = row.lines[y] + o * x_factor;
            for (std::int64_t i = 0; i < x_factor; ++i)
                lanes += table[pixels[i]];
        }
        const std::uint64_t red = mean(lanes & kLaneMask);
        const std::uint64_t green = mean(lanes >> kLaneBits & kLaneMask);
        dest[o] = index[(red * 32 + green) * 32 + mean(lanes >> 2 * kLaneBits)];
    }
}

// Blocks of any size.
void reduce_wide(const BlockRow& row, const LOGPALETTE256& palette, const unsigned char* index,
                 unsigned char* dest) {
    const std::uint64_t divisor =
        static_cast<std::uint64_t>(row.x_factor) * static_cast<std::uint64_t>(row.y_factor) * 8;
    for (std::int64_t o = 0; o < row.count; ++o) {
        std::uint64_t red = 0;
        std::uint64_t green = 0;
        std::uint64_t blue = 0;
        for (std::int64_t y = 0; y < row.y_factor; ++y) {
            const unsigned char* pixels = row.lines[y] + o * row.x_factor;
            for (std::int64_t i = 0; i < row.x_factor; ++i) {
                const PALETTEENTRY& colour = palette.palPalEntry[pixels[i]];
                red += colour.peRed;
                green += colour.peGreen;
                blue += colour.peBlue;
            }
        }
        dest[o] = index[(red / divisor * 32 + green / divisor) * 32 + blue / divisor];
    }
}

void reduce(const BlockRow& row, const LOGPALETTE256& palette, const unsigned char* index,
            unsigned char* dest) {
    if (row.x_factor * row.y_factor > kLanePixels) return reduce_wide(row, palette, index, dest);
    const LaneTable table = lanes_of(palette);
    switch (row.x_factor) {
        case 2:
            return reduce_in_lanes<2>(row, table, index, dest);
        case 3:
            return reduce_in_lanes<3>(row, table, index, dest);
        case 4:
            return reduce_in_lanes<4>(row, table, index, dest);
        default:
            return reduce_in_lanes<0>(row, table, index, dest);
    }
}

}  // namespace

int CZellap::getAALine(int firstLine, int firstCol, int colCount, unsigned char* dest, int xFactor,
                       int yFactor) {
    if (xFactor < 1 || yFactor < 1) return 0;
    if (firstLine < 0 || static_cast<std::int64_t>(firstLine) + yFactor > std::max(Height, 0)) return 0;
    if (colCount < 0 || colCount > std::max(Width, 0)) return 0;
    if (ChartFile == nullptr) return 0;

    const auto line_size = static_cast<std::size_t>(colCount);
    const auto line_count = static_cast<std::size_t>(yFactor);
    // More bytes than can be counted, which a 32-bit system may be asked for, are more than there are.
    if (line_size > std::numeric_limits<std::size_t>::max() / line_count) return 0;
    const std::unique_ptr<unsigned char[]> pixels(new (std::nothrow) unsigned char[line_size * line_count]);
    const std::unique_ptr<const unsigned char*[]> lines(new (std::nothrow) const unsigned char*[line_count]);
    if (pixels == nullptr || lines == nullptr) return 0;
    if (!getMultiLines(firstLine, yFactor, firstCol, colCount, pixels.get())) return 0;
    for (std::size_t y = 0; y < line_count; ++y)
        lines[y] = pixels.get() + y * line_size;
    reduce({lines.get(), xFactor, yFactor, colCount / xFactor}, LogPalette, ColourIndex, dest);
    return 1;
}
