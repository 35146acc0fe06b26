#pragma once

#include <zellap10/platform/export.h>
#include <zellap10/projection/projection.h>

/// @file
///
/// The Lambert conformal conic projection of the ellipsoid, with one or two standard parallels. A cone for
/// the southern hemisphere has a negative cone constant.
///
/// Source: Snyder (1987), Map Projections: A Working Manual, USGS Prof. Paper 1395, eqs. (14-1), (14-2),
/// (14-4), (14-9) to (14-11), (14-15), (15-7) to (15-11) and (7-9).

/// Writes lat0, lon0 and the lam_ fields of a record whose ellipsoid fields are filled.
///
/// @param lat0        latitude of origin, degrees, where y is 0 on the central meridian
/// @param lon0        central meridian, degrees
/// @param lat1, lat2  standard parallels, degrees; exactly equal ones give one parallel. Two that are
///                    symmetric about the equator, or both on it, give no cone: every result is NaN
/// @param parms       in and out: the record
///
/// Rounding measured: 3e-7 m of lam_rho0 at most, for parallels one degree apart. NaN in, NaN out.
ZELLAP10_API void lambert_init(double lat0, double lon0, double lat1, double lat2, tagPPARMS* parms);

/// Position to plane.
///
/// @param parms     the record, from lambert_init or project_init2
/// @param lat, lon  degrees, north and east positive
/// @param x, y      out: metres, positive east of the central meridian and north of the latitude of origin
///
/// The pole of the cone's own hemisphere is the cone's tip, x = 0 and y = lam_rho0; latitude -90 gives NaN on
/// a northern cone, and latitude 90 a very far point on a southern one. The difference to the central
/// meridian is not wrapped. NaN in, NaN out. Rounding measured: 9e-8 m at most (3000 positions on its own
/// side of the equator within 60 degrees of the central meridian, parallels at least one degree apart, up to
/// latitude 89).
ZELLAP10_API void lambert_f(const tagPPARMS* parms, double lat, double lon, double* x, double* y);

/// Plane to position.
///
/// @param parms     the same record
/// @param x, y      metres
/// @param lat, lon  out: degrees; the longitude is within 180 / |n| of the central meridian and not wrapped
///
/// The cone's tip gives its pole and the central meridian. NaN in, NaN out.
/// Rounding measured: 4e-13 degrees of latitude, 3e-12 of longitude at most (3000 points as above). The
/// iteration itself stops up to 3e-8 degrees off the latitude.
ZELLAP10_API void lambert_i(const tagPPARMS* parms, double x, double y, double* lat, double* lon);
