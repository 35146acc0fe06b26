#include <array>
#include <cstddef>
#include <memory>
#include <mutex>
#include <new>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include <pybind11/stl.h>

#include "bindings.h"
#include "catalogue.h"
#include "plain.h"
#include <zellap10/plotter/quilt.h>

namespace zellap10::python {

namespace {

using plotter::Argb;
using plotter::MapView;

/// A quilt is for one thread at a time, so a lock is held while it draws.
class Quilt {
public:
    Quilt(const std::shared_ptr<const plotter::Catalogue>& catalogue, std::size_t memory, int threads)
        : quilt_(catalogue, options(memory, threads)) {}

    /// Rows x columns x 4.
    py::array_t<unsigned char> draw(const MapView& view, const std::string& scheme,
                                    const std::array<unsigned char, 4>& background) {
        const plotter::ColourScheme colours = scheme_of(scheme);
        const auto [width, height] = view.size();
        py::array_t<unsigned char> image({height, width, 4});
        unsigned char* to = image.mutable_data();
        const py::gil_scoped_release free;
        const std::lock_guard<std::mutex> lock(drawing_);
        std::vector<Argb> pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
        const Argb outside = Argb{background[3]} << 24U | Argb{background[0]} << 16U |
                             Argb{background[1]} << 8U | Argb{background[2]};
        const plotter::Bitmap bitmap{pixels.data(), width, height, std::ptrdiff_t{4} * width};
        if (!quilt_.draw_complete(view, colours, outside, bitmap).complete) throw std::bad_alloc();
        for (const Argb pixel : pixels) {
            for (const unsigned shift : {16U, 8U, 0U, 24U})
                *to++ = static_cast<unsigned char>(pixel >> shift);
        }
        return image;
    }

    py::object at(const MapView& view, double x, double y) {
        std::optional<plotter::Quilt::Hit> hit;
        {
            const py::gil_scoped_release free;
            const std::lock_guard<std::mutex> lock(drawing_);
            hit = quilt_.at(view, {x, y});
        }
        if (!hit) return py::none();
        return py::make_tuple(*hit->entry, hit->pixel.x, hit->pixel.y);
    }

    py::list problems() const { return list_of(quilt_.problems()); }

private:
    static plotter::Quilt::Options options(std::size_t memory, int threads) {
        if (threads < 1 || threads > 64) throw std::invalid_argument("threads are from 1 to 64");
        plotter::Quilt::Options options;
        options.memory_bytes = memory;
        options.threads = threads;
        options.workers = threads;
        return options;
    }

    std::mutex drawing_;
    plotter::Quilt quilt_;
};

}  // namespace

void add_quilt(py::module_& module) {
    py::class_<Quilt>(module, "Quilt", R"(Draws the charts of a catalogue as one seamless map.

On top is the most detailed chart that is readable at the scale of the view; coarser charts fill the gaps.
Several threads may use one quilt; they take turns.

Args:
    catalogue: nothing may be added to it afterwards.
    memory: limit of the decoded chart data, bytes.
    threads: that draw, 1 to 64.

>>> catalogue = Catalogue()
>>> _ = catalogue.add(".")
>>> image = Quilt(catalogue).draw(MapView(50.0, -1.0, 200.0, 400, 300))
>>> image.shape
(300, 400, 4)
)")
        .def(py::init(&SharedCatalogue::drawer<Quilt, std::size_t, int>), py::arg("catalogue"),
             py::arg("memory") = std::size_t{256} << 20U, py::arg("threads") = 1)
        .def("draw", &Quilt::draw, py::arg("view"), py::arg("scheme") = "day",
             py::arg("background") = std::array<unsigned char, 4>{0, 0, 0, 0},
             R"(Draws a view completely.

Args:
    view: a MapView.
    scheme: "day", "dusk" or "night".
    background: red, green, blue, alpha where there is no chart, 0 to 255.

Returns:
    An array of bytes, rows x columns x 4: red, green, blue, alpha.

Raises:
    ValueError: an unknown scheme.
    MemoryError: memory ran out.
)")
        .def("at", &Quilt::at, py::arg("view"), py::arg("x"), py::arg("y"),
             R"(The chart at a screen pixel among those of the last draw.

Returns:
    (entry, x, y) with the pixel on the chart's raster, or None.
)")
        .def("problems", &Quilt::problems, "The charts that could not be shown: a list of (path, reason).");
}

}  // namespace zellap10::python
