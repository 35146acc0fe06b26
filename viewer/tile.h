#pragma once

#include <cstddef>
#include <memory>
#include <tuple>

#include <viewer/types.h>

namespace viewer {

/// The picture of a chart at one reduction and in one light.
struct Layer {
    int chart = 0;  ///< its place in the list of charts
    int reduction = 1;
    ColourScheme light = ColourScheme::kDay;

    auto fields() const { return std::tie(chart, reduction, light); }
};

/// Tiles lie in columns and rows from a layer's upper left; those at its right and lower edge run over it.
constexpr int kTileWidth = 256;
constexpr int kTileHeight = 32;

struct TileKey {
    Layer layer;
    int column = 0;
    int row = 0;

    friend bool operator<(const TileKey& a, const TileKey& b) {
        return std::make_tuple(a.layer.fields(), a.row, a.column) <
               std::make_tuple(b.layer.fields(), b.row, b.column);
    }
};

/// The pixels of a tile, line after line; null for one that is not there.
using Tile = std::shared_ptr<const Argb[]>;

constexpr std::size_t kTileBytes = sizeof(Argb) * kTileWidth * kTileHeight;

/// Tiles side by side. They are drawn in one go: a scan line is decoded from the chart's left edge, whatever
/// part of it is asked for.
struct Strip {
    Layer layer;
    int row = 0;
    int first_column = 0;
    int columns = 0;
};

}  // namespace viewer
