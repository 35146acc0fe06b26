#pragma once

#include <cmath>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>

#include <zellap10/plotter/colours.h>
#include <zellap10/plotter/outline.h>
#include <zellap10/plotter/pixel_outline.h>
#include <zellap10/plotter/quilt.h>

/// @file
///
/// Conversions between small values of the library and those of Python.

namespace zellap10::python {

namespace py = pybind11;

/// A text of a file, which need not be UTF-8.
inline py::str text(const char* bytes) {
    PyObject* const decoded = PyUnicode_DecodeUTF8(
        bytes, static_cast<Py_ssize_t>(std::char_traits<char>::length(bytes)), "replace");
    if (decoded == nullptr) throw py::error_already_set();
    return py::reinterpret_steal<py::str>(decoded);
}

/// A path, or a text with one, as Python spells it: bytes that are not UTF-8 survive the way back.
inline py::object path_text(const std::string& path) {
    PyObject* const decoded =
        PyUnicode_DecodeFSDefaultAndSize(path.data(), static_cast<Py_ssize_t>(path.size()));
    if (decoded == nullptr) throw py::error_already_set();
    return py::reinterpret_steal<py::object>(decoded);
}

inline plotter::ColourScheme scheme_of(const std::string& name) {
    if (name == "day") return plotter::ColourScheme::kDay;
    if (name == "dusk") return plotter::ColourScheme::kDusk;
    if (name == "night") return plotter::ColourScheme::kNight;
    throw std::invalid_argument("'" + name + "' is none of day, dusk and night");
}

inline void check_datum(int datum) {
    if (datum < 0 || datum > 119) throw std::invalid_argument("a datum is a number from 0 to 119");
}

/// Whether a datum is the chart's own.
inline bool is_chart_datum(const std::string& name) {
    if (name == "chart") return true;
    if (name == "wgs84") return false;
    throw std::invalid_argument("'" + name + "' is neither wgs84 nor chart");
}

/// Corners, n x 2: latitude and longitude.
inline py::array_t<double> array_of(const plotter::Outline& outline) {
    py::array_t<double> array({static_cast<py::ssize_t>(outline.corners.size()), py::ssize_t{2}});
    double* to = array.mutable_data();
    for (const plotter::Position& corner : outline.corners) {
        *to++ = corner.latitude;
        *to++ = corner.longitude;
    }
    return array;
}

/// Corners, n x 2: x and y.
inline py::array_t<double> array_of(const plotter::PixelOutline& outline) {
    py::array_t<double> array({static_cast<py::ssize_t>(outline.corners().size()), py::ssize_t{2}});
    double* to = array.mutable_data();
    for (const plotter::ChartPixel& corner : outline.corners()) {
        *to++ = corner.x;
        *to++ = corner.y;
    }
    return array;
}

/// (path, reason) of each.
inline py::list list_of(const std::vector<plotter::Quilt::Problem>& problems) {
    py::list list;
    for (const plotter::Quilt::Problem& problem : problems)
        list.append(py::make_tuple(path_text(problem.path), path_text(problem.text)));
    return list;
}

/// South, west, north, east; the last is above 180 if the extent crosses the 180th meridian.
inline py::tuple tuple_of(const plotter::Extent& extent) {
    return py::make_tuple(extent.south, extent.west, extent.north, extent.west + extent.width);
}

}  // namespace zellap10::python
