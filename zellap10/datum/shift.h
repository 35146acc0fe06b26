#pragma once

#include <zellap10/platform/export.h>

/// @file
///
/// Moves positions between geodetic datums, on two roads: the Molodensky formulae, in one step and in place
/// (datum_to_WGS, WGS_to_datum), or through earth-centred coordinates (llhxyz, then shxyz, then xyzllh). The
/// two roads differ by centimetres as a rule, by 0.3 m at most up to latitude 60 and by 1.1 m up to 85.
///
/// A datum is a row number from 0 to 119; WGS-84 is 117. Any other number gives NaN for every result.
/// Latitudes and longitudes are decimal degrees, north and east positive, of any size: nothing is folded at a
/// pole or wrapped at 180. Heights, in metres, stand above the ellipsoid of the datum in question. Infinity
/// and NaN are handed on. No pointer may be null.

/// Moves a position from a datum to WGS-84 by the standard Molodensky formulae.
///
/// @param lat    in: latitude on the datum, degrees, -90 to 90; out: on WGS-84, may pass 90 by a little
/// @param lon    in: longitude on the datum, degrees; out: on WGS-84, may pass 180. At a pole (cosine of the
///               latitude below 1e-12 in size) it comes back as it was, whatever the height
/// @param h      in: height above the datum's ellipsoid, metres; out: above that of WGS-84
/// @param datum  0 to 119; 117 and its equals move angles by last places only
///
/// Rounding measured: 4e-14 degrees and 2e-12 m at most (10^6 positions over all rows, up to latitude 85 and
/// 9 km); towards a pole that of the longitude grows by 1 / cos lat. A power is taken as a product with a
/// root, which moves the latitude by four last places at most, and nothing else. Source: DMA TR 8350.2,
/// Department of Defense World Geodetic System 1984, the standard Molodensky datum transformation formulas.
ZELLAP10_API void datum_to_WGS(double* lat, double* lon, double* h, int datum);

/// Moves a position from WGS-84 to a datum by the standard Molodensky formulae.
///
/// Arguments, poles, rounding and source as in datum_to_WGS, with the two datums exchanged. The two are no
/// exact inverses: up to latitude 85 a journey there and back can leave 0.00002 degrees of latitude, 0.0002
/// of longitude and 0.45 m.
ZELLAP10_API void WGS_to_datum(double* lat, double* lon, double* h, int datum);

/// Turns a geodetic position into earth-centred coordinates on the datum's ellipsoid, its shift left out.
///
/// @param lat, lon  degrees
/// @param h         height above the datum's ellipsoid, metres
/// @param datum     0 to 119
/// @param x, y, z   out: metres; x through latitude 0, longitude 0, y through longitude 90, z through the
///                  north pole. At latitude 90, x and y are some 1e-6 m and not 0
///
/// Rounding measured: 3e-9 m at most (10^6 positions over all rows, heights up to 9 km). Source: DMA TR
/// 8350.2, the geodetic to rectangular conversion.
ZELLAP10_API void llhxyz(double lat, double lon, double h, int datum, double* x, double* y, double* z);

/// Turns earth-centred coordinates into a geodetic position on the datum's ellipsoid, its shift left out.
///
/// @param x, y, z  metres
/// @param datum    0 to 119
/// @param lat      out: degrees, -90 to 90
/// @param lon      out: degrees, -180 to 180
/// @param h        out: height above the datum's ellipsoid, metres
///
/// On the polar axis (x = y = 0) latitude is 90 or -90 by the sign of z, longitude 0 and the height the size
/// of z less the semi-minor axis; at the earth's centre they are 0, 0 and minus the semi-major axis. Near
/// the axis the height loses its meaning: p metres off it, rounding leaves up to 0.005 / p metres of height.
///
/// Rounding measured: 3e-14 degrees and 1.2e-8 m at most up to latitude 85, heights up to 9 km, where the
/// closed form itself misses 7e-12 degrees of latitude and 9e-7 m of height. Source: Bowring (1976),
/// Transformation from spatial to geographical coordinates, Survey Review 23 (181), the closed form, in one
/// step.
ZELLAP10_API void xyzllh(double x, double y, double z, int datum, double* lat, double* lon, double* h);

/// Moves earth-centred coordinates from one datum to another, in place, by the difference of their shifts.
///
/// @param from, to  0 to 119; 117 in the place of either is WGS-84
/// @param x, y, z   in: metres on `from`; out: metres on `to`
///
/// Exact but for the one sum of each axis.
ZELLAP10_API void shxyz(int from, int to, double* x, double* y, double* z);
