#pragma once

/// @file
///
/// The raster of a chart in true colour, reduced by powers of two and cut into tiles.

#include <cstddef>
#include <functional>
#include <vector>

#include <zellap10/chart/zellap.h>
#include <zellap10/plotter/colours.h>

namespace zellap10::plotter {

/// Pixels along the edge of a tile. Around it a tile has two pixels of its neighbours, or of the nearest
/// column and row at the edges of the chart, so that the pixels under a box are in one tile.
constexpr int kTileSide = 256;
constexpr int kTileApron = 2;

/// The levels of a chart: at level n a pixel is the mean of 2^n by 2^n chart pixels, or of those that the
/// chart has at its right and lower edge.
constexpr int kMostLevel = 13;

/// The level for a number of chart pixels per screen pixel, which leaves less than two of its pixels.
[[nodiscard]] int level_for(double reduction);

/// The size of a level.
[[nodiscard]] CSize level_size(CSize chart, int level);

/// The pixels of a tile with its apron, and one more, which `resample` may read. At the right and lower edge
/// of a level a tile is smaller.
struct Tile {
    int width = 0;
    int height = 0;
    std::vector<Argb> pixels;
};

/// The memory that the pixels of a tile take, in bytes.
///
/// @param level        the size of its level
/// @param column, row  of the tile
[[nodiscard]] std::size_t tile_bytes(CSize level, int column, int row);

/// Some tiles of a row of tiles, from left to right.
struct TileRow {
    int level;
    int row;
    int first_column;
    int count;
};

/// Decodes tiles.
///
/// @param chart    open
/// @param colours  of the chart
/// @param goes_on  called before each line or piece of a line; ends the work if false
/// @return         the tiles; none if the work was ended or if the chart cannot be read
[[nodiscard]] std::vector<Tile> decode_tiles(CZellap& chart, const ColourTable& colours, const TileRow& row,
                                             const std::function<bool()>& goes_on);

}  // namespace zellap10::plotter
