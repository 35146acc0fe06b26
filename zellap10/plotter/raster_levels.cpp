#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>
#include <utility>

#include <zellap10/plotter/block_means.h>
#include <zellap10/plotter/raster_levels.h>

namespace zellap10::plotter {

namespace {

// Reads rows of a level between two columns.
class LevelReader {
public:
    LevelReader(CZellap& chart, const ColourTable& colours, int level, int first, int end)
        : chart_(chart), colours_(colours), first_(first) {
        if (level > 0)
            means_ = std::make_unique<BlockMeans>(chart, colours, 1 << level, first, end);
        else
            indexes_.resize(static_cast<std::size_t>(end - first));
    }

    // False if a line cannot be read, or if the work was ended.
    bool read(int row, std::vector<Argb>& pixels, const std::function<bool()>& goes_on) {
        if (means_) return means_->read(row, pixels.data(), goes_on);
        const int columns = static_cast<int>(indexes_.size());
        if (!goes_on() || chart_.getMultiLines(row, 1, first_, columns, indexes_.data()) == 0) return false;
        std::transform(indexes_.begin(), indexes_.end(), pixels.begin(),
                       [this](unsigned char index) { return colours_[index]; });
        return true;
    }

private:
    CZellap& chart_;
    const ColourTable& colours_;
    int first_;
    std::vector<unsigned char> indexes_;
    // Of a reduced level. GCC 12 warns of an optional here, with the address sanitizer.
    std::unique_ptr<BlockMeans> means_;
};

// Pixels along a side of a tile, apron included.
int side_of(int level_pixels, int tile) {
    return std::clamp(level_pixels - tile * kTileSide, 1, kTileSide) + 2 * kTileApron;
}

}  // namespace

std::size_t tile_bytes(CSize level, int column, int row) {
    return sizeof(Argb) * (static_cast<std::size_t>(side_of(level.cx, column)) *
                               static_cast<std::size_t>(side_of(level.cy, row)) +
                           1);
}

int level_for(double reduction) {
    return reduction >= 2.0 ? std::min(std::ilogb(reduction), kMostLevel) : 0;
}

CSize level_size(CSize chart, int level) {
    const auto reduced = [level](int pixels) {
        return static_cast<int>((std::int64_t{pixels} + (std::int64_t{1} << level) - 1) >> level);
    };
    return {reduced(chart.cx), reduced(chart.cy)};
}

std::vector<Tile> decode_tiles(CZellap& chart, const ColourTable& colours, const TileRow& row,
                               const std::function<bool()>& goes_on) {
    const CSize size = level_size(chart.GetDocumentSize(), row.level);
    const int left = row.first_column * kTileSide - kTileApron;
    const int top = row.row * kTileSide - kTileApron;
    const int first = std::clamp(left, 0, size.cx - 1);
    const int end = std::clamp(left + row.count * kTileSide + 2 * kTileApron, first + 1, size.cx);
    LevelReader reader(chart, colours, row.level, first, end);
    std::vector<Argb> pixels(static_cast<std::size_t>(end - first));
    std::vector<Tile> tiles;
    for (int i = 0; i < row.count; ++i) {
        Tile tile{side_of(size.cx, row.first_column + i), side_of(size.cy, row.row), {}};
        tile.pixels.resize(static_cast<std::size_t>(tile.width) * static_cast<std::size_t>(tile.height) + 1);
        tiles.push_back(std::move(tile));
    }
    int read_row = -1;
    for (int y = 0; y < side_of(size.cy, row.row); ++y) {
        const int wanted = std::clamp(top + y, 0, size.cy - 1);
        if (wanted != read_row && !reader.read(wanted, pixels, goes_on)) return {};
        read_row = wanted;
        int column = left;
        for (Tile& tile : tiles) {
            Argb* const dest = tile.pixels.data() + std::ptrdiff_t{y} * tile.width;
            for (int x = 0; x < tile.width; ++x)
                dest[x] = pixels[static_cast<std::size_t>(std::clamp(column + x, first, end - 1) - first)];
            column += kTileSide;
        }
    }
    return tiles;
}

}  // namespace zellap10::plotter
