#include <algorithm>
#include <array>
#include <cstdint>

#include <zellap10/plotter/raster_levels.h>

namespace zellap10::plotter {

namespace {

// Red, green and blue in lanes of 21 bits, which hold the sum of kLanePixels pixels.
using Lanes = std::uint64_t;
constexpr int kLaneBits = 21;
constexpr Lanes kLaneMask = (Lanes{1} << kLaneBits) - 1;
constexpr int kLanePixels = 8192;
static_assert(kLanePixels * 255 <= kLaneMask, "a lane holds the sum of its pixels");
static_assert(kLanePixels >= 1 << kMostLevel, "and that of a line of a block");

Lanes lanes_of(Argb colour) {
    return Lanes{colour >> 16 & 0xFF} << 2 * kLaneBits | Lanes{colour >> 8 & 0xFF} << kLaneBits |
           Lanes{colour & 0xFF};
}

struct Sum {
    std::array<std::uint64_t, 3> channels{};

    void add(Lanes lanes) {
        for (int i = 0; i < 3; ++i)
            channels[static_cast<std::size_t>(i)] += lanes >> i * kLaneBits & kLaneMask;
    }
    Argb mean(std::uint64_t count) const {
        Argb colour = 0xFF000000;
        for (int i = 0; i < 3; ++i) {
            const std::uint64_t value = (channels[static_cast<std::size_t>(i)] + count / 2) / count;
            colour |= static_cast<Argb>(value) << 8 * i;
        }
        return colour;
    }
};

// Reads rows of a level between two columns.
class LevelReader {
public:
    LevelReader(CZellap& chart, const ColourTable& colours, int level, int first, int end)
        : chart_(chart), colours_(colours), level_(level), size_(chart.GetDocumentSize()) {
        left_ = first << level;
        columns_ = std::min<std::int64_t>(std::int64_t{end} << level, size_.cx) - left_;
        indexes_.resize(static_cast<std::size_t>(columns_));
        if (level == 0) return;
        for (std::size_t i = 0; i < colours.size(); ++i)
            lanes_[i] = lanes_of(colours[i]);
        lines_.resize(static_cast<std::size_t>(end - first));
        sums_.resize(lines_.size());
    }

    // False if a line cannot be read, or after a stop.
    bool read(int row, std::vector<Argb>& pixels, const std::atomic<bool>& stop) {
        if (level_ == 0) {
            if (!read_line(row, stop)) return false;
            std::transform(indexes_.begin(), indexes_.end(), pixels.begin(),
                           [this](unsigned char index) { return colours_[index]; });
            return true;
        }
        std::fill(sums_.begin(), sums_.end(), Sum());
        const int first = row << level_;
        const int end = static_cast<int>(std::min<std::int64_t>(std::int64_t{row + 1} << level_, size_.cy));
        const int flush_after = kLanePixels >> level_;
        for (int line = first; line < end; ++line) {
            if (!read_line(line, stop)) return false;
            add_line();
            if ((line - first + 1) % flush_after == 0 || line + 1 == end) flush();
        }
        for (std::size_t i = 0; i < sums_.size(); ++i)
            pixels[i] = sums_[i].mean(static_cast<std::uint64_t>(end - first) * width_of(i));
        return true;
    }

private:
    bool read_line(int line, const std::atomic<bool>& stop) {
        return !stop &&
               chart_.getMultiLines(line, 1, left_, static_cast<int>(columns_), indexes_.data()) != 0;
    }
    std::uint64_t width_of(std::size_t block) const {
        const std::int64_t left = static_cast<std::int64_t>(block) << level_;
        return static_cast<std::uint64_t>(std::min(columns_ - left, std::int64_t{1} << level_));
    }
    void add_line() {
        const unsigned char* index = indexes_.data();
        for (std::size_t block = 0; block < lines_.size(); ++block) {
            Lanes lanes = 0;
            for (std::uint64_t i = width_of(block); i > 0; --i)
                lanes += lanes_[*index++];
            lines_[block] += lanes;
        }
    }
    void flush() {
        for (std::size_t i = 0; i < lines_.size(); ++i) {
            sums_[i].add(lines_[i]);
            lines_[i] = 0;
        }
    }

    CZellap& chart_;
    const ColourTable& colours_;
    int level_;
    CSize size_;
    int left_ = 0;
    std::int64_t columns_ = 0;
    std::vector<unsigned char> indexes_;
    std::array<Lanes, 256> lanes_{};
    std::vector<Lanes> lines_;
    std::vector<Sum> sums_;
};

}  // namespace

CSize level_size(CSize chart, int level) {
    const auto reduced = [level](int pixels) {
        return static_cast<int>((std::int64_t{pixels} + (std::int64_t{1} << level) - 1) >> level);
    };
    return {reduced(chart.cx), reduced(chart.cy)};
}

std::vector<Tile> decode_tiles(CZellap& chart, const ColourTable& colours, const TileRow& row,
                               const std::atomic<bool>& stop) {
    const CSize size = level_size(chart.GetDocumentSize(), row.level);
    const int left = row.first_column * kTileSide - kTileApron;
    const int top = row.row * kTileSide - kTileApron;
    const int first = std::clamp(left, 0, size.cx - 1);
    const int end = std::clamp(left + row.count * kTileSide + 2 * kTileApron, first + 1, size.cx);
    LevelReader reader(chart, colours, row.level, first, end);
    std::vector<Argb> pixels(static_cast<std::size_t>(end - first));
    std::vector<Tile> tiles(static_cast<std::size_t>(row.count),
                            Tile(static_cast<std::size_t>(kTileStride) * kTileStride));
    int read_row = -1;
    for (int y = 0; y < kTileStride; ++y) {
        const int wanted = std::clamp(top + y, 0, size.cy - 1);
        if (wanted != read_row && !reader.read(wanted, pixels, stop)) return {};
        read_row = wanted;
        for (std::size_t tile = 0; tile < tiles.size(); ++tile) {
            Argb* dest = tiles[tile].data() + std::ptrdiff_t{y} * kTileStride;
            const int column = left + static_cast<int>(tile) * kTileSide;
            for (int x = 0; x < kTileStride; ++x)
                dest[x] = pixels[static_cast<std::size_t>(std::clamp(column + x, first, end - 1) - first)];
        }
    }
    return tiles;
}

}  // namespace zellap10::plotter
