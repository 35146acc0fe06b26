#pragma once

#include <zellap10/platform/export.h>
#include <zellap10/projection/projection.h>

/// @file
///
/// The transverse Mercator projection of the ellipsoid by series, with the scale 0.9996 on the central
/// meridian. There are no zones and no false easting or northing.
///
/// The series are valid within about 6 degrees of the central meridian. Positions farther away are not
/// refused, but their results lose their meaning. Source: Snyder (1987), Map Projections: A Working Manual,
/// USGS Prof. Paper 1395, eqs. (8-9) to (8-25), (3-21), (3-24) and (3-26).

/// Writes lat0, lon0 and the utm_ fields of a record whose ellipsoid fields are filled.
///
/// @param lat  latitude of origin, degrees, where y is 0 on the central meridian
/// @param lon  central meridian, degrees
/// @param parms  in and out: the record
///
/// Rounding measured: 4e-9 m of utm_m0 at most. NaN in, NaN out.
ZELLAP10_API void utm_init(double lat, double lon, tagPPARMS* parms);

/// Position to plane.
///
/// @param parms     the record, from utm_init or project_init2
/// @param lat, lon  degrees, north and east positive
/// @param x, y      out: metres, positive east of the central meridian and north of the latitude of origin
///
/// x and y are finite at the poles. The difference to the central meridian is not wrapped. NaN in, NaN out.
/// Rounding measured: x 5e-10 m, y 7e-9 m at most (10^6 positions on four ellipsoids, within 4 degrees of the
/// central meridian and up to latitude 85).
ZELLAP10_API void utm_f(const tagPPARMS* parms, double lat, double lon, double* x, double* y);

/// Plane to position.
///
/// @param parms     the same record
/// @param x, y      metres
/// @param lat, lon  out: degrees; neither is folded or wrapped
///
/// At a pole, only x = 0 has a position, whose longitude has no meaning; other results diverge. NaN in, NaN
/// out. The series is up to 8e-9 degrees of latitude and 7e-8 of longitude off (positions as above). Rounding
/// measured: 6e-14 degrees at most.
ZELLAP10_API void utm_i(const tagPPARMS* parms, double x, double y, double* lat, double* lon);
