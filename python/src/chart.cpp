#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>
#include <pybind11/stl/filesystem.h>

#include "bindings.h"
#include "plain.h"
#include <zellap10/plotter/plotter.h>
#include <zellap10/zellap10.h>

namespace zellap10::python {

namespace {

using Bytes = py::array_t<unsigned char>;

/// A chart that cannot be opened or read, with the reason in words.
struct ChartError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

std::string reason(const std::string& path) {
    const auto diagnosis = plotter::diagnose_chart(path);
    return path + ": " + (diagnosis ? diagnosis->text : "Memory ran out.");
}

using Diagnose = std::optional<plotter::Diagnosis> (*)(const std::string&);

/// The text of a diagnosis, or None.
template <Diagnose diagnose>
py::object words(const std::filesystem::path& path) {
    const auto diagnosis = diagnose(path.string());
    return diagnosis ? path_text(diagnosis->text) : py::none();
}

/// Registers ChartError. Its text may contain a path that is not UTF-8.
void add_error(py::module_& module) {
    static const py::handle type = py::exception<ChartError>(module, "ChartError").release();
    type.attr("__doc__") = "A chart that cannot be opened or read, with the reason in words.";
    py::register_exception_translator([](std::exception_ptr thrown) {
        try {
            if (thrown) std::rethrow_exception(thrown);
        } catch (const ChartError& error) {
            PyErr_SetObject(type.ptr(), path_text(error.what()).ptr());
        }
    });
}

/// An inset of a chart.
struct Inset {
    std::string name;
    std::optional<plotter::Georeference> georeference;
};

/// An open chart. An object of the library is for one thread at a time, so a lock is held while it decodes.
class Chart {
public:
    explicit Chart(const std::filesystem::path& path)
        : path_(path.string()), chart_(std::make_unique<CZellap>()) {
        const py::gil_scoped_release free;
        if (chart_->OpenZellap(path_.c_str(), 0) == 0) throw ChartError(reason(path_));
        sheet_.emplace(*chart_->GetBaseGeoRec(), chart_->GetDocumentSize());
        for (const CGEORec* inset : chart_->GetBaseGeoRec()->Insets) {
            insets_.push_back({static_cast<const char*>(inset->Name), sheet_->insets()[insets_.size()]});
        }
    }

    /// Waits until no other thread decodes. The properties need the interpreter's lock only.
    void close() {
        std::unique_lock<std::mutex> lock(decoding_, std::defer_lock);
        {
            const py::gil_scoped_release free;
            lock.lock();
        }
        chart_.reset();
    }

    bool closed() const { return chart_ == nullptr; }
    py::object path() const { return path_text(path_); }
    py::str name() const { return text(open().ChartName); }
    const std::optional<plotter::Georeference>& georeference() const { return sheet_->chart(); }
    const std::vector<Inset>& insets() const { return insets_; }

    std::optional<plotter::Georeference> georeference_at(double x, double y) const {
        return sheet_->georeference_at({x, y});
    }

    std::pair<int, int> size() const {
        const CSize size = open().GetDocumentSize();
        return {size.cx, size.cy};
    }

    /// Texts of the georeference file.
    py::dict texts() const {
        const CGEORec& record = *open().GetBaseGeoRec();
        py::dict texts;
        for (const auto& [key, value] :
             {std::pair{"scale", &record.Scale}, std::pair{"projection", &record.Projection},
              std::pair{"datum", &record.Datum}, std::pair{"depth_units", &record.DepthUnits},
              std::pair{"sounding_datum", &record.SoundingDatum}, std::pair{"country", &record.Country},
              std::pair{"source_edition", &record.SourceEdition},
              std::pair{"date_published", &record.DatePublished},
              std::pair{"last_update", &record.LastUpdate}}) {
            texts[key] = text(*value);
        }
        return texts;
    }

    /// The colours, n x 3.
    Bytes palette() const {
        PALETTEENTRY entries[256];
        const unsigned count = GetPaletteEntries(open().GetPaletteHandle(), 0, 256, entries);
        Bytes colours({static_cast<py::ssize_t>(count), py::ssize_t{3}});
        unsigned char* to = colours.mutable_data();
        for (unsigned i = 0; i < count; ++i) {
            *to++ = entries[i].peRed;
            *to++ = entries[i].peGreen;
            *to++ = entries[i].peBlue;
        }
        return colours;
    }

    Bytes pixels(int left, int top, std::optional<int> width, std::optional<int> height) {
        const Rectangle part = rectangle(left, top, width, height, open().GetDocumentSize());
        Bytes indexes({part.height, part.width});
        unsigned char* const into = indexes.mutable_data();
        const py::gil_scoped_release free;
        const std::lock_guard<std::mutex> lock(decoding_);
        if (open().getMultiLines(part.top, part.height, part.left, part.width, into) != 0) return indexes;
        throw ChartError("the pixels of the chart cannot be read");
    }

    /// Rows x columns x 3.
    Bytes rgb(int reduction, const std::string& scheme, int left, int top, std::optional<int> width,
              std::optional<int> height) {
        if (reduction < 1) throw std::invalid_argument("a reduction is 1 or more");
        const CSize size = open().GetDocumentSize();
        const CSize reduced{blocks(size.cx, reduction), blocks(size.cy, reduction)};
        const Rectangle part = rectangle(left, top, width, height, reduced);
        const plotter::Viewport viewport{part.left, part.top, reduction, part.width, part.height};
        Bytes image({viewport.height, viewport.width, 3});
        unsigned char* to = image.mutable_data();
        const plotter::ColourTable colours = plotter::colours_of(open(), scheme_of(scheme));
        const py::gil_scoped_release free;
        for (const unsigned char index : indexes_of(viewport)) {
            for (const unsigned shift : {16U, 8U, 0U}) {
                *to++ = static_cast<unsigned char>(colours[index] >> shift);
            }
        }
        return image;
    }

private:
    static int blocks(int pixels, int reduction) {
        return pixels / reduction + (pixels % reduction > 0 ? 1 : 0);
    }

    struct Rectangle {
        int left;
        int top;
        int width;
        int height;
    };

    /// A rectangle inside the chart; without a width or height it has all that follows.
    static Rectangle rectangle(int left, int top, std::optional<int> width, std::optional<int> height,
                               CSize size) {
        if (left >= 0 && top >= 0 && left <= size.cx && top <= size.cy) {
            const Rectangle part{left, top, width.value_or(size.cx - left), height.value_or(size.cy - top)};
            const bool columns = part.width >= 0 && part.width <= size.cx - left;
            const bool rows = part.height >= 0 && part.height <= size.cy - top;
            if (columns && rows) return part;
        }
        throw std::invalid_argument("the rectangle is not inside the chart of " + std::to_string(size.cx) +
                                    " x " + std::to_string(size.cy) + " pixels");
    }

    std::vector<unsigned char> indexes_of(const plotter::Viewport& viewport) {
        std::vector<unsigned char> indexes(static_cast<std::size_t>(viewport.width) *
                                           static_cast<std::size_t>(viewport.height));
        const std::lock_guard<std::mutex> lock(decoding_);
        if (plotter::read_viewport(open(), viewport, 0, indexes.data())) return indexes;
        throw ChartError("the pixels of the chart cannot be read");
    }

    CZellap& open() const {
        if (closed()) throw std::invalid_argument("the chart is closed");
        return *chart_;
    }

    std::string path_;
    std::unique_ptr<CZellap> chart_;  // null after close
    std::optional<plotter::Sheet> sheet_;
    std::vector<Inset> insets_;
    std::mutex decoding_;
};

constexpr const char* kChart = R"(An open chart. It closes itself at the end of a `with` block.

Several threads may use one chart; they take turns.

Args:
    path: the chart file; a georeference file with the same stem and the extension ".GEO" belongs to it.

Raises:
    ChartError: the file does not open, with the reason in words.
    ValueError: from operations on pixels and properties of an object that is closed.
)";

constexpr const char* kPixels = R"(Returns colour indexes of a rectangle at full scale.

Args:
    left, top: the first column and row, from 0.
    width, height: columns and rows; by default all that follow.

Returns:
    An array of bytes, height x width: rows of the palette.

Raises:
    ValueError: the rectangle is not inside the chart.
    ChartError: the file cannot be read any more.
)";

constexpr const char* kRgb =
    R"(Returns colours at a reduction: each pixel is the palette colour nearest to the mean of a block.

Args:
    reduction: chart pixels along the edge of a block, 1 or more.
    scheme: "day", "dusk" or "night".
    left, top: the first column and row, counted in blocks.
    width, height: columns and rows, counted in blocks; by default all that follow.

Returns:
    An array of bytes, height x width x 3: red, green, blue.

Raises:
    ValueError: a reduction below 1, an unknown scheme, a rectangle that is not inside the chart.
    ChartError: the file cannot be read any more.

>>> with Chart("gulf_of_maine.chart") as chart:
...     chart.size, chart.rgb(10).shape
((2563, 2589), (259, 257, 3))
)";

void add_diagnosis(py::module_& module) {
    module.def("diagnose_chart", &words<plotter::diagnose_chart>, py::arg("path"),
               "Why a chart file does not open, in words; None if it does.");
    module.def("diagnose_georeference", &words<plotter::diagnose_georeference>, py::arg("path"),
               "Why a chart file has no georeference, in words; None if it has one.");
}

}  // namespace

void add_chart(py::module_& module) {
    add_diagnosis(module);
    add_error(module);
    py::class_<Inset>(module, "Inset", "An inset of a chart.")
        .def_property_readonly(
            "name", [](const Inset& self) { return text(self.name.c_str()); }, "Its name.")
        .def_readonly("georeference", &Inset::georeference, "Its Georeference, or None.");
    py::class_<Chart>(module, "Chart", kChart)
        .def(py::init<const std::filesystem::path&>(), py::arg("path"))
        .def("__enter__", [](py::object self) { return self; })
        .def("__exit__", [](Chart& chart, const py::args&) { chart.close(); })
        .def("close", &Chart::close, "Closes the file. Closing twice does nothing.")
        .def_property_readonly("closed", &Chart::closed, "Whether the chart is closed.")
        .def_property_readonly("path", &Chart::path, "The path that the chart was opened by.")
        .def_property_readonly("name", &Chart::name, "The name in the chart's header.")
        .def_property_readonly("size", &Chart::size, "(width, height) in pixels.")
        .def_property_readonly("palette", &Chart::palette,
                               "The colours, an array of bytes, n x 3: red, green, blue of each index.")
        .def_property_readonly(
            "texts", &Chart::texts,
            "Texts of the georeference file as they are there: scale, projection, datum, "
            "depth_units, sounding_datum, country, source_edition, date_published and last_update.")
        .def_property_readonly("georeference", &Chart::georeference,
                               "The Georeference of the chart; None if it has none. It remains after close.")
        .def_property_readonly("insets", &Chart::insets,
                               "The insets in the order of the file, a list of Inset.")
        .def("georeference_at", &Chart::georeference_at, py::arg("x"), py::arg("y"),
             "The Georeference of the inset that owns a pixel, else that of the chart; None if it has none.")
        .def("pixels", &Chart::pixels, py::arg("left") = 0, py::arg("top") = 0, py::arg("width") = py::none(),
             py::arg("height") = py::none(), kPixels)
        .def("rgb", &Chart::rgb, py::arg("reduction") = 1, py::arg("scheme") = "day", py::arg("left") = 0,
             py::arg("top") = 0, py::arg("width") = py::none(), py::arg("height") = py::none(), kRgb);
}

}  // namespace zellap10::python
