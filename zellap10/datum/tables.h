#pragma once

#include <cstdint>
#include <limits>

namespace zellap10::datum {

/// The base ellipsoid, WGS-84: semi-major axis in metres and flattening, which is 1/298.257223563.
constexpr double kWgs84A = 6378137.0;
constexpr double kWgs84F = 0.0033528106647474805;
static_assert(kWgs84F == 1.0 / 298.257223563, "the flattening of WGS-84");

constexpr int kDatumCount = 120;
constexpr int kEllipsoidCount = 18;

/// An ellipsoid as its difference from WGS-84.
struct EllipsoidRow {
    double da;  ///< semi-major axis of WGS-84 minus this one's, metres
    double df;  ///< flattening of WGS-84 minus this one's, times 10000
};

/// A datum: the number of its ellipsoid, and its shift to WGS-84 along the earth-centred axes in metres.
struct DatumRow {
    const char* name;
    std::int32_t ellipsoid;
    std::int32_t dx, dy, dz;
};

extern const EllipsoidRow kEllipsoids[kEllipsoidCount];
extern const DatumRow kDatums[kDatumCount];

/// A datum in the figures of calculations.
struct DatumFigures {
    double a;           ///< semi-major axis, metres
    double f;           ///< flattening
    double e2;          ///< eccentricity squared, 2f - f*f
    double dx, dy, dz;  ///< shift to WGS-84, metres
};

inline bool is_row(int datum) {
    return datum >= 0 && datum < kDatumCount;
}

/// The figures of a row of kDatums.
///
/// @param datum  0 to 119; for any other number, all figures are NaN
inline DatumFigures datum_figures(int datum) {
    if (!is_row(datum)) {
        constexpr double nan = std::numeric_limits<double>::quiet_NaN();
        return {nan, nan, nan, nan, nan, nan};
    }
    const DatumRow& row = kDatums[datum];
    const EllipsoidRow& ellipsoid = kEllipsoids[row.ellipsoid];
    const double a = kWgs84A - ellipsoid.da;
    const double f = kWgs84F - 0.0001 * ellipsoid.df;
    return {a, f, (f + f) - f * f, double(row.dx), double(row.dy), double(row.dz)};
}

}  // namespace zellap10::datum
