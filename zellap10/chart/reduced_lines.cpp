#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>

#include <zellap10/chart/line_reader.h>

namespace {

using zellap10::chart::LineReader;
using zellap10::chart::Run;

// Sums of red, green and blue over pixels: in three lanes of one word, 21 bits each, or in one word each. A
// subtraction may come before its addition; the sum then passes below zero and returns.
template <int kWords>
struct Sums {
    static constexpr int kLaneBits = kWords == 1 ? 21 : 64;
    static constexpr std::uint64_t kLaneMask = UINT64_MAX >> (64 - kLaneBits);

    std::uint64_t words[kWords] = {};

    Sums() = default;
    explicit Sums(const PALETTEENTRY& colour) {
        const unsigned char channels[] = {colour.peRed, colour.peGreen, colour.peBlue};
        for (int i = 0; i < 3; ++i)
            words[i % kWords] |= std::uint64_t{channels[i]} << i / kWords * kLaneBits;
    }
    void add(const Sums& other, std::uint64_t times) {
        for (int i = 0; i < kWords; ++i)
            words[i] += other.words[i] * times;
    }
    std::uint64_t channel(int i) const { return words[i % kWords] >> i / kWords * kLaneBits & kLaneMask; }
};

// Larger blocks, and wider lines, are not summed in lanes.
constexpr int kLanePixels = 8224;
constexpr int kLaneColumns = 1 << 24;
static_assert(std::uint64_t{kLanePixels} * 255 <= Sums<1>::kLaneMask, "a lane holds the sum of its pixels");

// Divides; in lanes by a multiplication. That exceeds the quotient by less than number / 2^40, which does not
// reach the next integer as long as the number times the divisor is at most 2^40.
template <int kWords>
struct Divider {
    explicit Divider(std::uint64_t number) : divisor(number), reciprocal((UINT64_C(1) << 40) / number + 1) {}
    std::uint64_t operator()(std::uint64_t number) const {
        return kWords == 1 ? number * reciprocal >> 40 : number / divisor;
    }
    std::uint64_t divisor;
    std::uint64_t reciprocal;
};
static_assert(Sums<1>::kLaneMask * kLanePixels * 8 < UINT64_C(1) << 40, "the means in lanes are exact");
static_assert(std::uint64_t{kLaneColumns} * kLanePixels < UINT64_C(1) << 40, "and so are the blocks");

struct BlockRow {
    int first_line, first_col;
    int x_factor, y_factor;
    int count;  // blocks, 1 or more
};

// A difference array of block sums: each change of colour adds to the difference of its block and to that of
// the next, so a run costs two additions, whatever its length. The running sum gives the block sums.
template <int kWords>
int reduce(const CZellap& chart, const BlockRow& row, unsigned char* dest) {
    const auto count = static_cast<std::size_t>(row.count);
    const std::unique_ptr<Sums<kWords>[]> differences(new (std::nothrow) Sums<kWords>[count + 1]);
    if (differences == nullptr) return 0;
    Sums<kWords> colours[256];
    for (int i = 0; i < 256; ++i)
        colours[i] = Sums<kWords>(chart.LogPalette.palPalEntry[i]);

    const auto width = static_cast<std::uint64_t>(row.x_factor);
    const Divider<kWords> block_of(width);
    const int end_line = row.first_line + row.y_factor;
    LineReader reader(chart, end_line);
    for (int line = row.first_line; line < end_line; ++line) {
        Sums<kWords> before;
        std::uint64_t x = 0;
        reader.read(line, row.first_col, row.count * row.x_factor, [&](const Run& run, std::size_t length) {
            const auto block = static_cast<std::size_t>(block_of(x));
            const std::uint64_t into = x - block * width;
            Sums<kWords> change = colours[run.colour];
            change.add(before, UINT64_MAX);
            differences[block].add(change, width - into);
            differences[block + 1].add(change, into);
            before = colours[run.colour];
            x += length;
        });
    }
    // The factor 8 reduces the mean to the upper 5 bits of a channel.
    const Divider<kWords> mean_of(width * static_cast<std::uint64_t>(row.y_factor) * 8);
    Sums<kWords> sum;
    for (std::size_t i = 0; i < count; ++i) {
        sum.add(differences[i], 1);
        dest[i] = chart.ColourIndex[(mean_of(sum.channel(0)) * 32 + mean_of(sum.channel(1))) * 32 +
                                    mean_of(sum.channel(2))];
    }
    return 1;
}

}  // namespace

int CZellap::getAALine(int firstLine, int firstCol, int colCount, unsigned char* dest, int xFactor,
                       int yFactor) {
    if (xFactor < 1 || yFactor < 1 || colCount < 0) return 0;
    if (!zellap10::chart::is_inside(*this, firstLine, yFactor, firstCol, colCount)) return 0;
    const BlockRow row{firstLine, firstCol, xFactor, yFactor, colCount / xFactor};
    if (row.count == 0) return 1;
    const bool in_lanes = std::int64_t{xFactor} * yFactor <= kLanePixels && colCount < kLaneColumns;
    return in_lanes ? reduce<1>(*this, row, dest) : reduce<3>(*this, row, dest);
}
