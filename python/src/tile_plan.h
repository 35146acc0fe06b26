#pragma once

#include <cstdint>
#include <vector>

#include <zellap10/plotter/catalogue.h>

/// @file
///
/// Which web tiles touch a chart.

namespace zellap10::python {

/// A web tile; y counts from the north.
struct TileAddress {
    int zoom;
    int x;
    int y;
};

/// A square of tiles that are drawn together: those from x * size to (x + 1) * size - 1, and likewise for y.
struct TileBlock {
    int zoom;
    int x;
    int y;
    int size;                                             ///< tiles along an edge, a power of 2
    std::int64_t tiles = 0;                               ///< that touch a chart
    std::vector<const plotter::CatalogueEntry*> entries;  ///< that it touches, most detailed first
};

/// All blocks with tiles that touch a chart, for zooms from first to last, 0 to 24.
std::vector<TileBlock> plan_blocks(const plotter::Catalogue& catalogue, int first_zoom, int last_zoom);

/// The tiles of a block that touch a chart. Neighbours in the list are neighbours on the map.
std::vector<TileAddress> tiles_of(const plotter::Catalogue& catalogue, int zoom, int x, int y, int size);

}  // namespace zellap10::python
