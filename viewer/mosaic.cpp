#include "viewer/mosaic.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <optional>

namespace viewer {

namespace {

constexpr Argb kGrey = 0xFFB4B4B4;  // where nothing is there yet, by day

constexpr int kMarginColumns = 2;  // of tiles on either side of the window
constexpr int kMarginRows = 4;

// The coarsest picture of a chart is kept whole unless it has more tiles than this, which are 32 MiB.
constexpr std::int64_t kMostOverviewTiles = 1024;

// Blocks or tiles from `first` on and up to, and without, `last`.
struct Range {
    int first = 0;
    int last = 0;
};

// The blocks of one direction that the window shows.
Range shown(int first, int window, int blocks) {
    const std::int64_t last = std::int64_t{first} + window;
    return {std::clamp(first, 0, blocks), static_cast<int>(std::clamp<std::int64_t>(last, 0, blocks))};
}

// Tiles that some blocks fill, the last one perhaps in part.
int tile_count(int blocks, int tile) {
    return static_cast<int>((std::int64_t{blocks} + tile - 1) / tile);
}

Range tiles_of(Range blocks, int tile) {
    return {blocks.first / tile, tile_count(blocks.last, tile)};
}

// What of a tile is shown, in blocks.
Range shown_of(Range shown, int index, int tile) {
    const std::int64_t last = (std::int64_t{index} + 1) * tile;
    return {std::max(shown.first, index * tile), static_cast<int>(std::min<std::int64_t>(shown.last, last))};
}

Range wider(Range range, int by, int most) {
    return {std::max(range.first - by, 0), std::min(range.last + by, most)};
}

struct Area {
    Range columns;
    Range rows;
};

Area shown_blocks(const Camera& camera) {
    return {shown(camera.part().column, camera.window().width, camera.blocks().width),
            shown(camera.part().row, camera.window().height, camera.blocks().height)};
}

Area tiles_of(const Area& blocks) {
    return {tiles_of(blocks.columns, kTileWidth), tiles_of(blocks.rows, kTileHeight)};
}

Area shown_of(const Area& shown, int column, int row) {
    return {shown_of(shown.columns, column, kTileWidth), shown_of(shown.rows, row, kTileHeight)};
}

Argb* pixel_at(const Bitmap& picture, const Camera& camera, int column, int row) {
    return reinterpret_cast<Argb*>(static_cast<unsigned char*>(picture.pixels) +
                                   (row - camera.part().row) * picture.stride) +
           (column - camera.part().column);
}

void copy_tile(const Tile& tile, const Area& blocks, const Camera& camera, const Bitmap& picture) {
    const auto bytes = sizeof(Argb) * static_cast<std::size_t>(blocks.columns.last - blocks.columns.first);
    for (int row = blocks.rows.first; row < blocks.rows.last; ++row) {
        const Argb* line = tile.get() + std::ptrdiff_t{row % kTileHeight} * kTileWidth;
        std::memcpy(pixel_at(picture, camera, blocks.columns.first, row),
                    line + blocks.columns.first % kTileWidth, bytes);
    }
}

// The tiles of a coarser layer over some blocks of the camera's.
class Coarser {
public:
    Coarser(TileStore& tiles, const Layer& layer, const Area& blocks, int reduction)
        : from_(reduction), to_(layer.reduction) {
        area_ = tiles_of({{coarse(blocks.columns.first), coarse(blocks.columns.last - 1) + 1},
                          {coarse(blocks.rows.first), coarse(blocks.rows.last - 1) + 1}});
        for (int row = area_.rows.first; row < area_.rows.last; ++row) {
            for (int column = area_.columns.first; column < area_.columns.last; ++column)
                tiles_.push_back(tiles.find({layer, column, row}));
        }
    }

    bool is_whole() const { return std::find(tiles_.begin(), tiles_.end(), nullptr) == tiles_.end(); }

    // The coarse block over the middle of a block.
    int coarse(int block) const { return static_cast<int>((std::int64_t{block} * from_ + from_ / 2) / to_); }

    // The line of a tile with a coarse row; the tile is the one with a coarse column.
    const Argb* line(int column, int row) const {
        const int tile_row = row / kTileHeight - area_.rows.first;
        const int tile_column = column / kTileWidth - area_.columns.first;
        const int columns = area_.columns.last - area_.columns.first;
        return tiles_[static_cast<std::size_t>(std::ptrdiff_t{tile_row} * columns + tile_column)].get() +
               std::ptrdiff_t{row % kTileHeight} * kTileWidth;
    }

private:
    int from_;
    int to_;
    Area area_;
    std::vector<Tile> tiles_;
};

void stretch(const Coarser& coarser, const Area& blocks, const Camera& camera, const Bitmap& picture) {
    for (int row = blocks.rows.first; row < blocks.rows.last; ++row) {
        Argb* dest = pixel_at(picture, camera, blocks.columns.first, row);
        const int coarse_row = coarser.coarse(row);
        for (int column = blocks.columns.first; column < blocks.columns.last; ++column) {
            const int coarse_column = coarser.coarse(column);
            *dest++ = coarser.line(coarse_column, coarse_row)[coarse_column % kTileWidth];
        }
    }
}

void stand_in(TileStore& tiles, const Look& look, const Area& blocks, const Bitmap& picture) {
    const Camera& camera = look.camera;
    for (int step = camera.step() + 1; step < Camera::kSteps; ++step) {
        const Coarser coarser(tiles, {look.chart, Camera::kReductions[step], look.light}, blocks,
                              camera.part().reduction);
        if (coarser.is_whole()) return stretch(coarser, blocks, camera, picture);
    }
    const Argb grey = zellap10::plotter::colour_in(look.light, kGrey);
    for (int row = blocks.rows.first; row < blocks.rows.last; ++row)
        std::fill_n(pixel_at(picture, camera, blocks.columns.first, row),
                    blocks.columns.last - blocks.columns.first, grey);
}

void fill_outside(const Area& blocks, const Camera& camera, Argb background, const Bitmap& picture) {
    const auto line = [&](int y) {
        return reinterpret_cast<Argb*>(static_cast<unsigned char*>(picture.pixels) + y * picture.stride);
    };
    const int first = blocks.columns.first - camera.part().column;
    const int last = blocks.columns.last - camera.part().column;
    const int top = blocks.rows.first - camera.part().row;
    const int bottom = blocks.rows.last - camera.part().row;
    for (int y = 0; y < picture.height; ++y) {
        const bool inside = y >= top && y < bottom && first < last;
        std::fill(line(y), line(y) + (inside ? first : picture.width), background);
        if (inside) std::fill(line(y) + last, line(y) + picture.width, background);
    }
}

// The missing tiles of some columns, as strips.
void add_missing(TileStore& tiles, const Layer& layer, int row, Range columns, std::vector<Strip>& strips) {
    bool open = false;
    for (int column = columns.first; column < columns.last; ++column) {
        const bool missing = tiles.find({layer, column, row}) == nullptr;
        if (missing && open) ++strips.back().columns;
        if (missing && !open) strips.push_back({layer, row, column, 1});
        open = missing;
    }
}

}  // namespace

bool put_together(TileStore& tiles, const Look& look, Argb background, const Bitmap& picture) {
    const Layer layer{look.chart, look.camera.part().reduction, look.light};
    const Area shown = shown_blocks(look.camera);
    fill_outside(shown, look.camera, background, picture);
    const Area area = tiles_of(shown);
    bool complete = true;
    for (int row = area.rows.first; row < area.rows.last; ++row) {
        for (int column = area.columns.first; column < area.columns.last; ++column) {
            const Area blocks = shown_of(shown, column, row);
            if (const Tile tile = tiles.find({layer, column, row})) {
                copy_tile(tile, blocks, look.camera, picture);
            } else {
                stand_in(tiles, look, blocks, picture);
                complete = false;
            }
        }
    }
    return complete;
}

std::vector<Strip> missing_strips(TileStore& tiles, const Look& look) {
    const Layer layer{look.chart, look.camera.part().reduction, look.light};
    const ScreenSize blocks = look.camera.blocks();
    const Area area = tiles_of(shown_blocks(look.camera));
    const Range columns = wider(area.columns, kMarginColumns, tile_count(blocks.width, kTileWidth));
    const Range rows = wider(area.rows, kMarginRows, tile_count(blocks.height, kTileHeight));

    std::vector<Strip> strips;
    for (int row = rows.first; row < rows.last; ++row)
        add_missing(tiles, layer, row, columns, strips);
    const int middle = (area.rows.first + area.rows.last) / 2;
    const auto farness = [&](const Strip& strip) {
        const bool beside = strip.first_column >= area.columns.last ||
                            strip.first_column + strip.columns <= area.columns.first ||
                            strip.row < area.rows.first || strip.row >= area.rows.last;
        return std::make_pair(beside, std::abs(strip.row - middle));
    };
    std::stable_sort(strips.begin(), strips.end(),
                     [&](const Strip& a, const Strip& b) { return farness(a) < farness(b); });

    const int coarsest = Camera::kReductions[Camera::kSteps - 1];
    const ScreenSize chart = look.camera.chart();
    const Range overview_columns{0, tile_count(chart.width, kTileWidth * coarsest)};
    const int overview_rows = tile_count(chart.height, kTileHeight * coarsest);
    if (std::int64_t{overview_columns.last} * overview_rows > kMostOverviewTiles) return strips;
    for (int row = 0; row < overview_rows; ++row)
        add_missing(tiles, {look.chart, coarsest, look.light}, row, overview_columns, strips);
    return strips;
}

}  // namespace viewer
