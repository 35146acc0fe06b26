#include "bindings.h"
#include "broadcast.h"
#include "plain.h"
#include <zellap10/datum/shift.h>

namespace zellap10::python {

namespace {

using Shift = void (*)(double*, double*, double*, int);

py::object shifted(Shift shift, const Doubles& latitude, const Doubles& longitude, const Doubles& height,
                   int datum) {
    check_datum(datum);
    return broadcast<3, 3>({latitude, longitude, height}, [=](std::array<double, 3> position) {
        shift(&position[0], &position[1], &position[2], datum);
        return position;
    });
}

py::object to_cartesian(const Doubles& latitude, const Doubles& longitude, const Doubles& height, int datum) {
    check_datum(datum);
    return broadcast<3, 3>({latitude, longitude, height}, [=](const std::array<double, 3>& in) {
        std::array<double, 3> out;
        llhxyz(in[0], in[1], in[2], datum, &out[0], &out[1], &out[2]);
        return out;
    });
}

py::object from_cartesian(const Doubles& x, const Doubles& y, const Doubles& z, int datum) {
    check_datum(datum);
    return broadcast<3, 3>({x, y, z}, [=](const std::array<double, 3>& in) {
        std::array<double, 3> out;
        xyzllh(in[0], in[1], in[2], datum, &out[0], &out[1], &out[2]);
        return out;
    });
}

py::object shift_cartesian(const Doubles& x, const Doubles& y, const Doubles& z, int from, int to) {
    check_datum(from);
    check_datum(to);
    return broadcast<3, 3>({x, y, z}, [=](std::array<double, 3> point) {
        shxyz(from, to, &point[0], &point[1], &point[2]);
        return point;
    });
}

}  // namespace

void add_datum(py::module_& module) {
    module.def(
        "datum_to_wgs84",
        [](const Doubles& latitude, const Doubles& longitude, const Doubles& height, int datum) {
            return shifted(datum_to_WGS, latitude, longitude, height, datum);
        },
        py::arg("latitude"), py::arg("longitude"), py::arg("height") = 0.0, py::kw_only(), py::arg("datum"),
        R"(Moves positions from a datum to WGS 84 by the standard Molodensky formulas.

Args:
    latitude, longitude: degrees; scalars or arrays that broadcast.
    height: metres above the ellipsoid of the datum.
    datum: row of the datum table, 0 to 119.

Returns:
    (latitude, longitude, height) in WGS 84; NaN in, NaN out.

Raises:
    ValueError: a datum out of range, shapes that do not fit.
)");
    module.def(
        "wgs84_to_datum",
        [](const Doubles& latitude, const Doubles& longitude, const Doubles& height, int datum) {
            return shifted(WGS_to_datum, latitude, longitude, height, datum);
        },
        py::arg("latitude"), py::arg("longitude"), py::arg("height") = 0.0, py::kw_only(), py::arg("datum"),
        R"(Moves positions from WGS 84 to a datum. Arguments and errors as in datum_to_wgs84.)");
    module.def("geodetic_to_cartesian", &to_cartesian, py::arg("latitude"), py::arg("longitude"),
               py::arg("height") = 0.0, py::kw_only(), py::arg("datum") = 117,
               R"(Returns earth-centred x, y, z in metres on the ellipsoid of a datum, without its shift.

Args:
    latitude, longitude: degrees; scalars or arrays that broadcast.
    height: metres above the ellipsoid.

Raises:
    ValueError: a datum out of range, shapes that do not fit.
)");
    module.def("cartesian_to_geodetic", &from_cartesian, py::arg("x"), py::arg("y"), py::arg("z"),
               py::kw_only(), py::arg("datum") = 117,
               R"(Returns positions on the ellipsoid of a datum from earth-centred coordinates.

Args:
    x, y, z: metres; scalars or arrays that broadcast.
    datum: row of the datum table, 0 to 119; 117 is WGS 84.

Returns:
    (latitude, longitude, height) in degrees and metres: floats for scalars, else arrays of the common shape.

Raises:
    ValueError: a datum out of range, shapes that do not fit.
)");
    module.def("shift_cartesian", &shift_cartesian, py::arg("x"), py::arg("y"), py::arg("z"), py::kw_only(),
               py::arg("from_datum"), py::arg("to_datum"),
               R"(Moves earth-centred coordinates from one datum to another.

Args:
    x, y, z: metres; scalars or arrays that broadcast.
    from_datum, to_datum: rows of the datum table, 0 to 119.

Returns:
    (x, y, z) in metres: floats for scalars, else arrays of the common shape.

Raises:
    ValueError: a datum out of range, shapes that do not fit.
)");
}

}  // namespace zellap10::python
