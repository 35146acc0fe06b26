#include <cmath>
#include <limits>
#include <stdexcept>

#include "bindings.h"
#include "broadcast.h"
#include "plain.h"
#include <zellap10/plotter/map_view.h>

namespace zellap10::python {

namespace {

using plotter::MapView;

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

double finite(double number) {
    if (std::isfinite(number)) return number;
    throw std::invalid_argument("a view has no NaN or infinity");
}

MapView view_at(double latitude, double longitude, double metres_per_pixel, int width, int height,
                double course_up) {
    if (!(std::fabs(latitude) <= 90.0)) throw std::invalid_argument("a latitude is from -90 to 90");
    if (!(finite(metres_per_pixel) > 0.0)) throw std::invalid_argument("metres per pixel must be above 0");
    if (width < 1 || height < 1 || width > 32767 || height > 32767) {
        throw std::invalid_argument("width and height are from 1 to 32767");
    }
    return MapView({latitude, finite(longitude)}, metres_per_pixel, {width, height}, finite(course_up));
}

MapView view_of_tile(int zoom, int x, int y, int tile_size) {
    const auto view = MapView::of_tile(zoom, x, y, tile_size);
    if (view) return *view;
    throw std::invalid_argument(
        "there is no such tile: zoom is from 0 to 24, x and y below 2 to the power of "
        "zoom, the size from 1 to 4096");
}

py::object to_screen(const MapView& view, const Doubles& latitude, const Doubles& longitude) {
    return broadcast<2, 2>({latitude, longitude}, [&view](const std::array<double, 2>& in) {
        const auto pixel = view.to_screen({in[0], in[1]});
        return pixel ? std::array<double, 2>{pixel->x, pixel->y} : std::array<double, 2>{kNone, kNone};
    });
}

py::object to_position(const MapView& view, const Doubles& x, const Doubles& y) {
    return broadcast<2, 2>({x, y}, [&view](const std::array<double, 2>& in) {
        const auto position = view.to_position({in[0], in[1]});
        return position ? std::array<double, 2>{position->latitude, position->longitude}
                        : std::array<double, 2>{kNone, kNone};
    });
}

}  // namespace

void add_map_view(py::module_& module) {
    py::class_<MapView>(module, "MapView",
                        R"(Which part of the earth a screen shows (EPSG:3857). A view is a value.

Args:
    latitude, longitude: the centre, degrees in WGS 84; latitudes are held at 85.0511 north and south.
    metres_per_pixel: on the ground at the centre, held at 0.0001 and 1e7.
    width, height: pixels, 1 to 32767.
    course_up: the true course that points up, degrees.

Raises:
    ValueError: a number out of range; for NaN and infinity also from the methods that return a view.

>>> view = MapView(50.0, -1.0, 100.0, 800, 600)
>>> view.to_screen(50.0, -1.0)
(399.5, 299.5)
>>> [round(number, 3) for number in view.to_position(399.5, 299.5)]
[50.0, -1.0]
)")
        .def(py::init(&view_at), py::arg("latitude"), py::arg("longitude"), py::arg("metres_per_pixel"),
             py::arg("width"), py::arg("height"), py::arg("course_up") = 0.0)
        .def_static("of_tile", &view_of_tile, py::arg("zoom"), py::arg("x"), py::arg("y"),
                    py::arg("tile_size") = 256, R"(The view of a web tile; y counts from the north.

Raises:
    ValueError: there is no such tile.
)")
        .def("to_screen", &to_screen, py::arg("latitude"), py::arg("longitude"),
             "Returns (x, y) of positions in degrees, which broadcast. NaN beyond 89 degrees of latitude.")
        .def("to_position", &to_position, py::arg("x"), py::arg("y"),
             "Returns (latitude, longitude) in degrees of screen pixels, which broadcast.")
        .def(
            "moved_by",
            [](const MapView& self, double dx, double dy) { return self.moved_by(finite(dx), finite(dy)); },
            py::arg("dx"), py::arg("dy"),
            "The view whose centre is so many pixels to the right of and below this centre.")
        .def(
            "zoomed",
            [](const MapView& self, double factor, double x, double y) {
                if (!(finite(factor) > 0.0)) throw std::invalid_argument("the factor must be above 0");
                return self.zoomed(factor, {finite(x), finite(y)});
            },
            py::arg("factor"), py::arg("x"), py::arg("y"),
            "The view enlarged by a factor, with the same position at the screen pixel x, y.")
        .def(
            "turned_to",
            [](const MapView& self, double course_up) { return self.turned_to(finite(course_up)); },
            py::arg("course_up"), "The view with another course up, degrees.")
        .def_property_readonly(
            "centre",
            [](const MapView& self) {
                return py::make_tuple(self.centre().latitude, self.centre().longitude);
            },
            "(latitude, longitude) in degrees.")
        .def_property_readonly(
            "size", [](const MapView& self) { return py::make_tuple(self.size().width, self.size().height); },
            "(width, height) in pixels.")
        .def_property_readonly("metres_per_pixel", &MapView::metres_per_pixel, "On the ground at the centre.")
        .def_property_readonly("course_up", &MapView::course_up, "Degrees, from 0 to below 360.")
        .def_property_readonly(
            "extent", [](const MapView& self) { return tuple_of(self.extent()); },
            "(south, west, north, east) in degrees, to the outer edges of the pixels.");
}

}  // namespace zellap10::python
