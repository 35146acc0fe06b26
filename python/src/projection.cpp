#include <cmath>
#include <optional>
#include <stdexcept>
#include <string>

#include <pybind11/stl.h>

#include "bindings.h"
#include "broadcast.h"
#include "plain.h"
#include <zellap10/projection/projection.h>

namespace zellap10::python {

namespace {

int code_of(const std::string& kind) {
    const char* const kinds[] = {"mercator", "polyconic", "transverse_mercator", "lambert"};
    for (int i = 0; i < 4; ++i) {
        if (kind == kinds[i]) return i + 1;
    }
    throw std::invalid_argument("'" + kind +
                                "' is none of mercator, polyconic, transverse_mercator and lambert");
}

/// A projection that is set up once and then only read.
class Projection {
public:
    Projection(const std::string& kind, double latitude, double longitude, std::optional<double> parallel1,
               std::optional<double> parallel2, int datum)
        : code_(code_of(kind)) {
        check_datum(datum);
        const double lat1 = parallel1.value_or(latitude);
        const double lat2 = parallel2.value_or(lat1);
        for (const double degrees : {latitude, longitude, lat1, lat2}) {
            if (!std::isfinite(degrees))
                throw std::invalid_argument("the origin or a parallel is not a number");
        }
        project_init2(code_, latitude, longitude, lat1, lat2, datum, &parms_);
        if (code_ == 4 && !std::isfinite(parms_.lam_F)) {
            throw std::invalid_argument(
                "the two parallels are symmetric about the equator: there is no cone");
        }
    }

    py::object forward(const Doubles& latitude, const Doubles& longitude) const {
        return broadcast<2, 2>({latitude, longitude}, [this](const std::array<double, 2>& in) {
            std::array<double, 2> out;
            project_f(code_, &parms_, in[0], in[1], &out[0], &out[1]);
            return out;
        });
    }

    py::object inverse(const Doubles& x, const Doubles& y) const {
        return broadcast<2, 2>({x, y}, [this](const std::array<double, 2>& in) {
            std::array<double, 2> out;
            project_i(code_, &parms_, in[0], in[1], &out[0], &out[1]);
            return out;
        });
    }

private:
    int code_;
    PPARMS parms_;
};

}  // namespace

void add_projection(py::module_& module) {
    py::class_<Projection>(module, "Projection", R"(A map projection on the ellipsoid of a datum.

Args:
    kind: "mercator", "polyconic", "transverse_mercator" or "lambert".
    latitude: latitude of origin, degrees, north positive. Mercator and polyconic ignore it.
    longitude: central meridian, degrees, east positive.
    parallel1: a standard parallel of "lambert", degrees; by default the latitude of origin.
    parallel2: the other one; by default the same.
    datum: row of the datum table, 0 to 119; 117 is WGS 84.

Raises:
    ValueError: an unknown kind, NaN or infinity, a datum out of range, parallels without a cone.

>>> x, y = Projection("mercator").forward([0.0, 50.0], 1.0)
>>> x.round(), y.round()
(array([111319., 111319.]), array([      0., 6413525.]))
)")
        .def(
            py::init<const std::string&, double, double, std::optional<double>, std::optional<double>, int>(),
            py::arg("kind"), py::arg("latitude") = 0.0, py::arg("longitude") = 0.0,
            py::arg("parallel1") = py::none(), py::arg("parallel2") = py::none(), py::arg("datum") = 117)
        .def("forward", &Projection::forward, py::arg("latitude"), py::arg("longitude"),
             R"(Returns x and y in metres, without false easting or northing.

Args:
    latitude, longitude: degrees; scalars or arrays that broadcast.

Returns:
    (x, y): floats for scalars, else arrays of the common shape. NaN in, NaN out.
)")
        .def("inverse", &Projection::inverse, py::arg("x"), py::arg("y"),
             R"(Returns latitude and longitude in degrees. The longitude may pass 180.

Args:
    x, y: metres; scalars or arrays that broadcast.

Returns:
    (latitude, longitude): floats for scalars, else arrays of the common shape. NaN in, NaN out.
)");
}

}  // namespace zellap10::python
