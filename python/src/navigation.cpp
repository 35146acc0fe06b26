#include "bindings.h"
#include "broadcast.h"
#include <zellap10/navigation/course.h>
#include <zellap10/navigation/dead_reckoning.h>

namespace zellap10::python {

namespace {

py::object course_and_distance(const Doubles& latitude1, const Doubles& longitude1, const Doubles& latitude2,
                               const Doubles& longitude2) {
    return broadcast<2, 4>({latitude1, longitude1, latitude2, longitude2},
                           [](const std::array<double, 4>& in) {
                               std::array<double, 2> out;
                               out[1] = m_b_d(in[0], in[1], in[2], in[3], &out[0]);
                               return out;
                           });
}

py::object advance_position(const Doubles& latitude, const Doubles& longitude, const Doubles& distance,
                            const Doubles& course) {
    return broadcast<2, 4>({latitude, longitude, distance, course}, [](const std::array<double, 4>& in) {
        std::array<double, 2> out{in[0], in[1]};
        m_advance_d(&out[0], &out[1], in[2], in[3]);
        return out;
    });
}

py::object meridional_parts(const Doubles& latitude) {
    constexpr double kToRadians = 0.017453292519944444;
    return broadcast<1, 1>({latitude}, [](const std::array<double, 1>& in) {
        return std::array<double, 1>{m_parts(in[0] * kToRadians)};
    });
}

}  // namespace

void add_navigation(py::module_& module) {
    module.def(
        "course_and_distance", &course_and_distance, py::arg("latitude1"), py::arg("longitude1"),
        py::arg("latitude2"), py::arg("longitude2"),
        R"(Returns the rhumb line course and distance from one position to another, the short way round.

Args:
    latitude1, longitude1: from, degrees; scalars or arrays that broadcast. Longitudes from -180 to 180.
    latitude2, longitude2: to.

Returns:
    (course, distance): degrees clockwise from north, 0 to 360, and nautical miles. NaN in, NaN out.

Raises:
    ValueError: shapes that do not fit.

>>> course, distance = course_and_distance(50.0, -1.0, 51.0, -1.0)
>>> round(course, 3), round(distance, 3)
(0.0, 60.0)
)");
    module.def("advance", &advance_position, py::arg("latitude"), py::arg("longitude"), py::arg("distance"),
               py::arg("course"),
               R"(Moves positions along rhumb lines.

Args:
    latitude, longitude: degrees; scalars or arrays that broadcast.
    distance: nautical miles, negative backwards.
    course: degrees clockwise from north, from 0 to below 360.

Returns:
    (latitude, longitude) in degrees; the latitude may pass 90 and the longitude 180. NaN in, NaN out.

Raises:
    ValueError: shapes that do not fit.
)");
    module.def("meridional_parts", &meridional_parts, py::arg("latitude"),
               R"(Returns the meridional parts of latitudes in degrees, in minutes of arc on the equator.)");
}

}  // namespace zellap10::python
