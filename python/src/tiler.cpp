#include <algorithm>
#include <cstddef>
#include <memory>
#include <mutex>
#include <new>
#include <stdexcept>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include <pybind11/stl.h>

#include "bindings.h"
#include "catalogue.h"
#include "plain.h"
#include "png.h"
#include "tile_plan.h"
#include "webp.h"
#include <zellap10/plotter/quilt.h>

namespace zellap10::python {

namespace {

using plotter::Argb;
using plotter::MapView;

constexpr int kPngLevel = 4;  // of libdeflate: as fast as 1, and the files are a twentieth smaller
constexpr int kSheet = 4;     // tiles along the edge of what is drawn in one piece

struct EncodedTile {
    TileAddress address;
    std::string bytes;
};

/// Draws and encodes tiles. It is for one thread at a time, so a lock is held while it draws.
class Tiler {
public:
    Tiler(const std::shared_ptr<const plotter::Catalogue>& catalogue, int tile_size,
          const std::string& format, std::size_t memory)
        : catalogue_(catalogue),
          tile_size_(tile_size),
          webp_(format == "webp"),
          quilt_(catalogue, options(memory)),
          png_(checked(tile_size), tile_size, kPngLevel) {
        if (format != "png" && format != "webp") {
            throw std::invalid_argument("'" + format + "' is neither png nor webp");
        }
    }

    py::list block(int zoom, int x, int y, int size, const std::string& scheme) {
        const plotter::ColourScheme colours = scheme_of(scheme);
        check_block(zoom, x, y, size);
        std::vector<EncodedTile> tiles;
        {
            const py::gil_scoped_release free;
            const std::lock_guard<std::mutex> lock(drawing_);
            tiles = encoded(tiles_of(*catalogue_, zoom, x, y, size), std::min(kSheet, size), colours);
        }
        py::list result;
        for (const EncodedTile& tile : tiles) {
            result.append(py::make_tuple(tile.address.x, tile.address.y, py::bytes(tile.bytes)));
        }
        return result;
    }

    py::object tile(int zoom, int x, int y, const std::string& scheme) {
        const plotter::ColourScheme colours = scheme_of(scheme);
        if (!MapView::of_tile(zoom, x, y)) throw std::invalid_argument("there is no such tile");
        std::vector<EncodedTile> tiles;
        {
            const py::gil_scoped_release free;
            const std::lock_guard<std::mutex> lock(drawing_);
            tiles = encoded({{zoom, x, y}}, 1, colours);
        }
        if (tiles.empty()) return py::none();
        return py::bytes(tiles.front().bytes);
    }

    py::list problems() const { return list_of(quilt_.problems()); }

private:
    static int checked(int tile_size) {
        if (tile_size == 256 || tile_size == 512) return tile_size;
        throw std::invalid_argument("tiles have 256 or 512 pixels");
    }

    static void check_block(int zoom, int x, int y, int size) {
        for (const int edge : {1, 2, 4, 8, 16}) {
            if (size == edge && MapView::of_tile(zoom, x, y)) return;
            --zoom;  // of the tile that as many tiles along an edge fill
        }
        throw std::invalid_argument("there is no such block");
    }

    static plotter::Quilt::Options options(std::size_t memory) {
        plotter::Quilt::Options options;
        options.memory_bytes = memory;
        return options;
    }

    /// The tiles that are not empty. Those on one sheet, a square of tiles, are neighbours in the list.
    std::vector<EncodedTile> encoded(const std::vector<TileAddress>& tiles, int sheet,
                                     plotter::ColourScheme scheme) {
        std::vector<EncodedTile> result;
        const TileAddress* drawn = nullptr;
        const auto stride = static_cast<std::size_t>(sheet * tile_size_);
        for (const TileAddress& tile : tiles) {
            if (drawn == nullptr || drawn->x / sheet != tile.x / sheet ||
                drawn->y / sheet != tile.y / sheet) {
                draw_sheet(tile, sheet, scheme);
                drawn = &tile;
            }
            const auto row = static_cast<std::size_t>(tile.y % sheet * tile_size_);
            const auto column = static_cast<std::size_t>(tile.x % sheet * tile_size_);
            std::string bytes = encode(&pixels_[row * stride + column], stride);
            if (!bytes.empty()) result.push_back({tile, std::move(bytes)});
        }
        return result;
    }

    /// A square of tiles is one tile of an earlier zoom with more pixels.
    void draw_sheet(TileAddress tile, int sheet, plotter::ColourScheme scheme) {
        int zoom = tile.zoom;
        for (int tiles = sheet; tiles > 1; tiles /= 2)
            --zoom;
        const int edge = sheet * tile_size_;
        const auto view = MapView::of_tile(zoom, tile.x / sheet, tile.y / sheet, edge);
        pixels_.resize(static_cast<std::size_t>(edge) * static_cast<std::size_t>(edge));
        const plotter::Bitmap bitmap{pixels_.data(), edge, edge, std::ptrdiff_t{4} * edge};
        if (!quilt_.draw_complete(*view, scheme, 0, bitmap).complete) throw std::bad_alloc();
    }

    std::string encode(const Argb* pixels, std::size_t stride) {
        return webp_ ? encode_webp(pixels, tile_size_, tile_size_, stride) : png_.encode(pixels, stride);
    }

    std::mutex drawing_;
    std::shared_ptr<const plotter::Catalogue> catalogue_;
    int tile_size_;
    bool webp_;
    plotter::Quilt quilt_;
    PngEncoder png_;
    std::vector<Argb> pixels_;
};

/// (zoom, x, y, size, tiles, indexes of entries) of each block.
py::list planned(SharedCatalogue& catalogue, int first_zoom, int last_zoom) {
    if (first_zoom < 0 || first_zoom > last_zoom || last_zoom > 24) {
        throw std::invalid_argument("zooms are from 0 to 24, the first not above the last");
    }
    const auto [blocks, charts] = catalogue.call([&](const plotter::Catalogue& all) {
        return std::pair(plan_blocks(all, first_zoom, last_zoom), all.entries());
    });
    std::unordered_map<const plotter::CatalogueEntry*, std::size_t> index;
    for (const auto* entry : charts)
        index.emplace(entry, index.size());
    py::list result;
    for (const TileBlock& block : blocks) {
        py::list entries;
        for (const auto* entry : block.entries)
            entries.append(index[entry]);
        result.append(py::make_tuple(block.zoom, block.x, block.y, block.size, block.tiles, entries));
    }
    return result;
}

}  // namespace

void add_tiler(py::module_& module) {
    module.def("plan_blocks", &planned, py::arg("catalogue"), py::arg("first_zoom"), py::arg("last_zoom"),
               R"(Plans the blocks of tiles that touch a chart.

Returns:
    A list of (zoom, x, y, size, tiles, entries): a block has the tiles from x * size to (x + 1) * size - 1,
    and likewise for y; `tiles` of them touch a chart; `entries` are indexes in Catalogue.entries().

Raises:
    ValueError: zooms out of range.
)");
    py::class_<Tiler>(module, "Tiler", R"(Draws the web tiles of a catalogue and encodes them.

Args:
    catalogue: nothing may be added to it afterwards.
    tile_size: pixels, 256 or 512.
    format: "png" or "webp", both lossless.
    memory: limit of the decoded chart data, bytes.

Raises:
    ValueError: another size or format.
)")
        .def(py::init(&SharedCatalogue::drawer<Tiler, int, std::string, std::size_t>), py::arg("catalogue"),
             py::arg("tile_size") = 256, py::arg("format") = "png",
             py::arg("memory") = std::size_t{256} << 20U)
        .def("tile", &Tiler::tile, py::arg("zoom"), py::arg("x"), py::arg("y"), py::arg("scheme") = "day",
             R"(An encoded tile, counted from the north; None if it is empty.

Raises:
    ValueError: there is no such tile or scheme.
)")
        .def("block", &Tiler::block, py::arg("zoom"), py::arg("x"), py::arg("y"), py::arg("size"),
             py::arg("scheme") = "day", R"(The tiles of a block that are not empty, a list of (x, y, data).

Args:
    zoom, x, y, size: of plan_blocks; a size is 1, 2, 4, 8 or 16.
    scheme: "day", "dusk" or "night".

Raises:
    ValueError: there is no such block or scheme.
    MemoryError: memory ran out.
)")
        .def("problems", &Tiler::problems, "The charts that could not be shown: a list of (path, reason).");
}

}  // namespace zellap10::python
