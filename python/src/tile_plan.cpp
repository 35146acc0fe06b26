#include "tile_plan.h"

#include <array>
#include <functional>

#include <zellap10/plotter/map_view.h>

namespace zellap10::python {

namespace {

using Entries = plotter::Catalogue::Entries;

constexpr int kBlockLevels = 4;  // a block has 16 x 16 tiles, or all of its zoom

/// Visits the tiles that touch a chart, each before the four that it is divided into. Only charts that a tile
/// touches are compared with its parts.
class Descent {
public:
    /// Whether to go on to the parts of a tile.
    using Visit = std::function<bool(TileAddress, const Entries&)>;

    explicit Descent(Visit visit) : visit_(std::move(visit)) {}

    void from(TileAddress tile, const Entries& candidates) const {
        const auto view = plotter::MapView::of_tile(tile.zoom, tile.x, tile.y);
        if (!view) return;
        const plotter::Extent extent = view->extent();
        Entries touched;
        for (const plotter::CatalogueEntry* entry : candidates) {
            if (entry->extent.overlaps(extent) && entry->outline.overlaps(extent)) touched.push_back(entry);
        }
        if (touched.empty() || !visit_(tile, touched)) return;
        for (int part = 0; part < 4; ++part) {
            from({tile.zoom + 1, 2 * tile.x + part % 2, 2 * tile.y + part / 2}, touched);
        }
    }

private:
    Visit visit_;
};

}  // namespace

std::vector<TileBlock> plan_blocks(const plotter::Catalogue& catalogue, int first_zoom, int last_zoom) {
    std::vector<TileBlock> blocks;
    std::array<std::size_t, 32> around{};  // the block of each zoom around the tile that is visited
    const auto begin = [&](TileAddress tile, int zoom, const Entries& entries) {
        if (zoom < first_zoom || zoom > last_zoom) return;
        around[static_cast<std::size_t>(zoom)] = blocks.size();
        blocks.push_back({zoom, tile.x, tile.y, 1 << (zoom - tile.zoom), 0, entries});
    };
    const Descent descent([&](TileAddress tile, const Entries& entries) {
        for (int zoom = 0; tile.zoom == 0 && zoom < kBlockLevels; ++zoom)
            begin(tile, zoom, entries);
        begin(tile, tile.zoom + kBlockLevels, entries);
        if (tile.zoom >= first_zoom) ++blocks[around[static_cast<std::size_t>(tile.zoom)]].tiles;
        return tile.zoom < last_zoom;
    });
    descent.from({0, 0, 0}, catalogue.entries());
    return blocks;
}

std::vector<TileAddress> tiles_of(const plotter::Catalogue& catalogue, int zoom, int x, int y, int size) {
    int levels = 0;
    while (1 << levels < size)
        ++levels;
    std::vector<TileAddress> tiles;
    const Descent descent([&](TileAddress tile, const Entries&) {
        if (tile.zoom == zoom) tiles.push_back(tile);
        return tile.zoom < zoom;
    });
    descent.from({zoom - levels, x, y}, catalogue.entries());
    return tiles;
}

}  // namespace zellap10::python
