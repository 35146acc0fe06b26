#pragma once

#include <zellap10/platform/export.h>
#include <zellap10/projection/projection.h>

/// @file
///
/// The Lambert conformal conic projection of the ellipsoid, with one or two standard parallels. A southern
/// cone has a negative cone constant.
///
/// Source: Snyder (1987), Map Projections: A Working Manual, USGS Prof. Paper 1395, eqs. (14-1), (14-2),
/// (14-4), (14-9) to (14-11), (14-15), (15-7) to (15-11) and (7-9).

/// Writes lat0, lon0 and the lam_ fields of a record whose ellipsoid fields are filled.
///
/// @param lat0        latitude of origin, degrees, where y is 0 on the central meridian
/// @param lon0        central meridian, degrees
/// @param lat1, lat2  standard parallels, degrees; if they are exactly equal, there is one parallel. Two that
/// are
///                    symmetric about the equator, or both on it, define no cone: results are then NaN, and
///                    longitudes NaN or infinite
/// @param parms       in and out: the record
///
/// Rounding measured: 2e-13 / d of lam_rho0 at most for parallels d degrees apart (10^6 cones on four
/// ellipsoids, from latitude 5 up). NaN in, NaN out.
ZELLAP10_API void lambert_init(double lat0, double lon0, double lat1, double lat2, tagPPARMS* parms);

/// Position to plane.
///
/// @param parms     the record, from lambert_init or project_init2
/// @param lat, lon  degrees, north and east positive
/// @param x, y      out: metres, positive east of the central meridian and north of the latitude of origin
///
/// The tip of a northern cone is the north pole, at x = 0 and y = lam_rho0. At latitude -90, x and y are NaN
/// on every cone; at 90, x is infinite or NaN on a southern cone and y infinite. The difference to the
/// central meridian is not wrapped. NaN in, NaN out. Rounding measured: x 6e-9 m, y 3e-8 m at most (10^6
/// positions on four ellipsoids, in the cone's hemisphere up to latitude 89, within 60 degrees of the central
/// meridian, parallels one to ten degrees apart from latitude 5 up).
ZELLAP10_API void lambert_f(const tagPPARMS* parms, double lat, double lon, double* x, double* y);

/// Plane to position.
///
/// @param parms     the same record
/// @param x, y      metres
/// @param lat, lon  out: degrees; the longitude is within 180 / |n| of the central meridian and not wrapped
///
/// The tip of the cone is its pole. Its longitude is the central meridian on a northern cone; on a southern
/// one it is 180 / |n| from that, on the side that the sign of x selects, also the sign of a zero. Without a
/// cone, the latitude is NaN and the longitude infinite or NaN, depending on the sign of zero. NaN in, NaN
/// out. The iteration stops up to 4e-8 degrees off the latitude. Rounding measured: 2e-13 degrees of
/// latitude, 5e-14 of longitude at most (positions as above).
ZELLAP10_API void lambert_i(const tagPPARMS* parms, double x, double y, double* lat, double* lon);
