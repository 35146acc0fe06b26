#include <limits>
#include <string>

#include <pybind11/stl.h>

#include "bindings.h"
#include "broadcast.h"
#include "plain.h"
#include <zellap10/plotter/georeference.h>

namespace zellap10::python {

namespace {

using plotter::ChartPixel;
using plotter::Georeference;
using plotter::Position;

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

py::object position(const Georeference& georeference, const Doubles& x, const Doubles& y,
                    const std::string& datum) {
    const auto convert =
        is_chart_datum(datum) ? &Georeference::chart_datum_position_of : &Georeference::position_of;
    return broadcast<2, 2>({x, y}, [&georeference, convert](const std::array<double, 2>& in) {
        const auto found = (georeference.*convert)(ChartPixel{in[0], in[1]});
        return found ? std::array<double, 2>{found->latitude, found->longitude}
                     : std::array<double, 2>{kNone, kNone};
    });
}

py::object pixel(const Georeference& georeference, const Doubles& latitude, const Doubles& longitude,
                 const std::string& datum) {
    const auto convert =
        is_chart_datum(datum) ? &Georeference::pixel_of_chart_datum : &Georeference::pixel_of;
    return broadcast<2, 2>({latitude, longitude}, [&georeference, convert](const std::array<double, 2>& in) {
        const auto found = (georeference.*convert)(Position{in[0], in[1]});
        return found ? std::array<double, 2>{found->x, found->y} : std::array<double, 2>{kNone, kNone};
    });
}

py::object covers(const Georeference& georeference, const Doubles& latitude, const Doubles& longitude) {
    py::object answer = broadcast<1, 2>({latitude, longitude}, [&](const std::array<double, 2>& in) {
        return std::array<double, 1>{georeference.covers({in[0], in[1]}) ? 1.0 : 0.0};
    });
    if (py::isinstance<py::float_>(answer)) return py::bool_(answer.cast<double>() != 0.0);
    return answer.attr("astype")("bool");
}

}  // namespace

void add_georeference(py::module_& module) {
    py::class_<Georeference>(module, "Georeference", R"(The fit of a chart or of an inset.

It is a value of its own, which outlives the chart. Several threads may use it.

>>> with Chart("gulf_of_maine.chart") as chart:
...     georeference = chart.georeference
>>> latitude, longitude = georeference.position([20.0, 100.0], 50.0)
>>> x, y = georeference.pixel(latitude, longitude)
>>> x.round(6), y.round(6)
(array([ 20., 100.]), array([50., 50.]))
)")
        .def("position", &position, py::arg("x"), py::arg("y"), py::kw_only(), py::arg("datum") = "wgs84",
             R"(Returns the positions of pixels; outside the chart they are extrapolated.

Args:
    x, y: column and row, scalars or arrays that broadcast. Whole numbers are centres of pixels.
    datum: "wgs84", or "chart" for positions in the chart's own datum.

Returns:
    (latitude, longitude) in degrees, longitudes from -180 to 180: floats for scalars, else arrays of the
    common shape. NaN if no position projects to a pixel.

Raises:
    ValueError: an unknown datum, shapes that do not fit.
)")
        .def("pixel", &pixel, py::arg("latitude"), py::arg("longitude"), py::kw_only(),
             py::arg("datum") = "wgs84",
             R"(Returns the pixels of positions, not rounded; outside the chart they are extrapolated.

Args:
    latitude, longitude: degrees, scalars or arrays that broadcast. Longitudes may be in any turn.
    datum: "wgs84", or "chart" if the positions are in the chart's own datum.

Returns:
    (x, y): floats for scalars, else arrays of the common shape. NaN if a position has no pixel.

Raises:
    ValueError: an unknown datum, shapes that do not fit.
)")
        .def("covers", &covers, py::arg("latitude"), py::arg("longitude"),
             "Whether the outline contains positions in WGS 84: a bool, or an array of the common shape.")
        .def_property_readonly(
            "outline", [](const Georeference& self) { return array_of(self.outline()); },
            "The corners in WGS 84, an array n x 2: latitude and longitude in degrees.")
        .def_property_readonly(
            "chart_datum_outline",
            [](const Georeference& self) { return array_of(self.chart_datum_outline()); },
            "The corners in the chart's own datum, an array n x 2: latitude and longitude in degrees.")
        .def_property_readonly(
            "pixel_outline", [](const Georeference& self) { return array_of(self.pixel_outline()); },
            "The outline on the raster, an array n x 2: x and y.")
        .def_property_readonly("metres_per_pixel", &Georeference::metres_per_pixel,
                               "Metres per pixel, or None.");
}

}  // namespace zellap10::python
