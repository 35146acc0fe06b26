#include <cstring>
#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>
#include <pybind11/stl/filesystem.h>

#include "bindings.h"
#include "errors.h"
#include <zellap10/plotter/plotter.h>
#include <zellap10/zellap10.h>

namespace zellap10::python {

namespace py = pybind11;

namespace {

using Indexes = py::array_t<unsigned char>;

/// A text of a file, which need not be UTF-8.
py::str text(const char* bytes) {
    PyObject* const decoded =
        PyUnicode_DecodeUTF8(bytes, static_cast<Py_ssize_t>(std::strlen(bytes)), "replace");
    if (decoded == nullptr) throw py::error_already_set();
    return py::reinterpret_steal<py::str>(decoded);
}

std::string reason(const std::string& path) {
    const auto diagnosis = plotter::diagnose_chart(path);
    return path + ": " + (diagnosis ? diagnosis->text : "Memory ran out.");
}

/// An open chart. An object of the library is for one thread at a time, so a lock is held while it decodes.
class Chart {
public:
    explicit Chart(const std::filesystem::path& path) : path_(path.string()) {
        const py::gil_scoped_release free;
        chart_ = std::make_unique<CZellap>();
        if (chart_->OpenZellap(path_.c_str(), 0) != 0) return;
        throw ChartError(reason(path_));
    }

    void close() {
        const py::gil_scoped_release free;
        const std::lock_guard<std::mutex> lock(decoding_);
        chart_.reset();
    }

    bool closed() const { return chart_ == nullptr; }
    const std::string& path() const { return path_; }
    py::str name() { return text(open().ChartName); }

    std::pair<int, int> size() {
        const CSize size = open().GetDocumentSize();
        return {size.cx, size.cy};
    }

    /// The colours, n x 3.
    Indexes palette() {
        PALETTEENTRY entries[256];
        const unsigned count = GetPaletteEntries(open().GetPaletteHandle(), 0, 256, entries);
        Indexes colours({static_cast<py::ssize_t>(count), py::ssize_t{3}});
        auto colour = colours.mutable_unchecked<2>();
        for (unsigned i = 0; i < count; ++i) {
            colour(i, 0) = entries[i].peRed;
            colour(i, 1) = entries[i].peGreen;
            colour(i, 2) = entries[i].peBlue;
        }
        return colours;
    }

    Indexes pixels(int left, int top, std::optional<int> width, std::optional<int> height) {
        const CSize size = open().GetDocumentSize();
        const int columns = width.value_or(size.cx - left);
        const int rows = height.value_or(size.cy - top);
        if (left < 0 || top < 0 || columns < 0 || rows < 0 || left > size.cx - columns ||
            top > size.cy - rows) {
            throw std::invalid_argument("the rectangle is not inside the chart of " +
                                        std::to_string(size.cx) + " x " + std::to_string(size.cy) +
                                        " pixels");
        }
        Indexes indexes({rows, columns});
        unsigned char* const into = indexes.mutable_data();
        const py::gil_scoped_release free;
        const std::lock_guard<std::mutex> lock(decoding_);
        if (open().getMultiLines(top, rows, left, columns, into) != 0) return indexes;
        throw ChartError("the pixels of the chart cannot be read");
    }

    std::vector<py::str> inset_names() {
        std::vector<py::str> names;
        for (const CGEORec* inset : open().GetBaseGeoRec()->Insets)
            names.push_back(text(inset->Name));
        return names;
    }

private:
    CZellap& open() {
        if (closed()) throw std::invalid_argument("the chart is closed");
        return *chart_;
    }

    std::string path_;
    std::unique_ptr<CZellap> chart_;
    std::mutex decoding_;
};

}  // namespace

void add_chart(py::module_& module) {
    py::register_exception<ChartError>(module, "ChartError");
    py::class_<Chart>(module, "Chart", R"(An open chart. It closes itself at the end of a `with` block.

Several threads may use one chart; they take turns.

Args:
    path: the chart file; a georeference file with the same stem and the extension ".GEO" belongs to it.

Raises:
    ChartError: the file does not open, with the reason in words.
    ValueError: from every operation after close.
)")
        .def(py::init<const std::filesystem::path&>(), py::arg("path"))
        .def("__enter__", [](py::object self) { return self; })
        .def("__exit__", [](Chart& chart, const py::args&) { chart.close(); })
        .def("close", &Chart::close, "Closes the file. Closing twice does nothing.")
        .def_property_readonly("closed", &Chart::closed, "Whether the chart is closed.")
        .def_property_readonly("path", &Chart::path, "The path that the chart was opened by.")
        .def_property_readonly("name", &Chart::name, "The name in the chart's header.")
        .def_property_readonly("size", &Chart::size, "(width, height) in pixels.")
        .def_property_readonly(
            "palette", &Chart::palette,
            "The colours, an array of bytes, n x 3: red, green, blue of each colour index.")
        .def_property_readonly("inset_names", &Chart::inset_names, "The names of the insets.")
        .def("pixels", &Chart::pixels, py::arg("left") = 0, py::arg("top") = 0, py::arg("width") = py::none(),
             py::arg("height") = py::none(), R"(Returns colour indexes of a rectangle at full scale.

Args:
    left, top: the first column and row, from 0.
    width, height: columns and rows; by default all that follow.

Returns:
    An array of bytes, height x width: rows of the palette.

Raises:
    ValueError: the rectangle is not inside the chart.
    ChartError: the file cannot be read any more.
)");
}

}  // namespace zellap10::python
