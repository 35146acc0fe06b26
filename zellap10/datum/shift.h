#pragma once

#include <zellap10/platform/export.h>

/// @file
///
/// Converts positions between geodetic datums, in two ways: by the Molodensky formulae, in one step and in
/// place (datum_to_WGS, WGS_to_datum), or through earth-centred coordinates (llhxyz, then shxyz, then
/// xyzllh). The two ways usually differ by centimetres, by at most 0.3 m up to latitude 60 and 1.1 m up
/// to 85.
///
/// A datum is a row number from 0 to 119; WGS-84 is 117. For any other number, every result is NaN.
/// Latitudes and longitudes are decimal degrees, north and east positive, of any size: nothing is folded at a
/// pole or wrapped at 180. Heights are metres above the ellipsoid of their datum. Infinity and NaN pass
/// through. No pointer may be null.

/// Converts a position from a datum to WGS-84 by the standard Molodensky formulae.
///
/// @param lat    in: latitude on the datum, degrees, -90 to 90; out: on WGS-84, may pass 90 by a little
/// @param lon    in: longitude on the datum, degrees; out: on WGS-84, may pass 180. At a pole (absolute
///               cosine of the latitude below 1e-12) it does not change
/// @param h      in: height above the datum's ellipsoid, metres; out: above that of WGS-84
/// @param datum  0 to 119; 117 and rows equal to it change angles only by rounding
///
/// Rounding measured: 4e-14 degrees and 2e-12 m at most (10^6 positions over all rows, up to latitude 85 and
/// 9 km); towards a pole that of the longitude grows by 1 / cos lat. Source: DMA TR 8350.2,
/// Department of Defense World Geodetic System 1984, the standard Molodensky datum transformation formulas.
ZELLAP10_API void datum_to_WGS(double* lat, double* lon, double* h, int datum);

/// Converts a position from WGS-84 to a datum by the standard Molodensky formulae.
///
/// Arguments, poles, rounding and source as in datum_to_WGS, with the two datums exchanged. The two functions
/// are not exact inverses: up to latitude 85, a conversion and its inverse can leave 0.00002 degrees of
/// latitude, 0.0002 of longitude and 0.45 m.
ZELLAP10_API void WGS_to_datum(double* lat, double* lon, double* h, int datum);

/// Converts a geodetic position to earth-centred coordinates on the datum's ellipsoid, without its shift.
///
/// @param lat, lon  degrees
/// @param h         height above the datum's ellipsoid, metres
/// @param datum     0 to 119
/// @param x, y, z   out: metres; x through latitude 0, longitude 0, y through longitude 90, z through the
///                  north pole. At latitude 90, x and y are about 1e-6 m, not 0
///
/// Rounding measured: 3e-9 m at most (10^6 positions over all rows, heights up to 9 km). Source: DMA TR
/// 8350.2, the geodetic to rectangular conversion.
ZELLAP10_API void llhxyz(double lat, double lon, double h, int datum, double* x, double* y, double* z);

/// Converts earth-centred coordinates to a geodetic position on the datum's ellipsoid, without its shift.
///
/// @param x, y, z  metres
/// @param datum    0 to 119
/// @param lat      out: degrees, -90 to 90
/// @param lon      out: degrees, -180 to 180
/// @param h        out: height above the datum's ellipsoid, metres
///
/// On the polar axis (x = y = 0), the latitude is 90 or -90 by the sign of z, the longitude is 0 and the
/// height is |z| minus the semi-minor axis. At the earth's centre they are 0, 0 and minus the semi-major
/// axis. Near the axis the height loses its meaning: p metres from it, rounding leaves up to 0.005 / p metres
/// of height.
///
/// Up to latitude 85, at heights up to 9 km, the closed form is up to 7e-12 degrees of latitude and 9e-7 m of
/// height off. Rounding measured there: 3e-14 degrees and 1.2e-8 m at most. Source: Bowring (1976),
/// Transformation from spatial to geographical coordinates, Survey Review 23 (181), the closed form, in one
/// step.
ZELLAP10_API void xyzllh(double x, double y, double z, int datum, double* lat, double* lon, double* h);

/// Shifts earth-centred coordinates from one datum to another, in place.
///
/// @param from, to  0 to 119; 117 is WGS-84
/// @param x, y, z   in: metres on `from`; out: metres on `to`
///
/// Exact except for one addition per axis.
ZELLAP10_API void shxyz(int from, int to, double* x, double* y, double* z);
