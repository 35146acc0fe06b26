#pragma once

#include <zellap10/platform/export.h>

/// @file
///
/// The record of a projection on one ellipsoid, and functions that call a projection by its code.

/// A projection on one ellipsoid: the figures of the ellipsoid, the origin, and what each projection computes
/// once at set-up, in fields of its own. A record holds one projection at a time. Fill it with project_init
/// or project_init2. Conversions only read it, so any number of threads may share it.
///
/// Angles in the record are RADIANS. Plane coordinates are metres without false easting or northing: x
/// increases with longitude, y with latitude.
struct tagPPARMS {
    double a = 0.0;   ///< semi-major axis, metres
    double f = 0.0;   ///< flattening
    double e = 0.0;   ///< first eccentricity
    double e2 = 0.0;  ///< e to the 2nd, 2f - f*f
    double e4 = 0.0;  ///< e to the 4th
    double e6 = 0.0;  ///< e to the 6th

    double lat0 = 0.0;  ///< latitude of origin, radians
    double lon0 = 0.0;  ///< central meridian, radians

    double merc_k = 0.0;  ///< scale of the parallel lat0 relative to the equator; no calculation reads it

    double poly_m0 = 0.0;  ///< meridian arc from the equator to lat0, metres

    double utm_m0 = 0.0;   ///< meridian arc from the equator to lat0, metres
    double utm_ep2 = 0.0;  ///< second eccentricity squared
    double utm_e1 = 0.0;   ///< the series parameter e1 of the inverse
    double utm_c0 = 0.0;   ///< meridian arc coefficient of phi, metres
    double utm_c2 = 0.0;   ///< meridian arc coefficient of sin 2 phi, metres
    double utm_c4 = 0.0;   ///< meridian arc coefficient of sin 4 phi, metres
    double utm_c6 = 0.0;   ///< meridian arc coefficient of sin 6 phi, metres

    double lam_F = 0.0;     ///< the Lambert constant F
    double lam_n = 0.0;     ///< the cone constant n
    double lam_rho0 = 0.0;  ///< radius of the parallel lat0 on the cone, metres
};
/// The record by its short name.
using PPARMS = tagPPARMS;

/// Fills a record for a projection with one origin, on the ellipsoid of a datum.
///
/// @param projection  1 Mercator, 2 polyconic, 3 transverse Mercator, 4 Lambert conformal conic; any other
///                    value fills only the ellipsoid fields
/// @param lat0        latitude of origin, degrees, north positive. For 4, it is also both parallels; 2
/// ignores
///                    it and measures y from the equator
/// @param lon0        central meridian, degrees, east positive
/// @param datum       0 to 119; any other number makes the ellipsoid's fields NaN, and all that depend on
///                    them: all except lat0, lon0 and the lam_n of one parallel
/// @param parms       out: the record; null does nothing. Fields of other projections do not change
///
/// NaN in lat0 or lon0 makes results that depend on it NaN.
ZELLAP10_API void project_init(int projection, double lat0, double lon0, int datum, tagPPARMS* parms);

/// Fills a record as project_init does, with two standard parallels.
///
/// @param projection, lat0, lon0, datum, parms  as in project_init
/// @param lat1, lat2  standard parallels, degrees, which only 4 uses. If they are equal, there is one
///                    parallel. Two that are symmetric about the equator, or both on it, define no cone:
///                    results are then NaN, and longitudes NaN or infinite
ZELLAP10_API void project_init2(int projection, double lat0, double lon0, double lat1, double lat2, int datum,
                                tagPPARMS* parms);

/// Converts a position to plane coordinates.
///
/// @param projection  the code with which the record was filled; other than 1 to 4, x and y do not change
/// @param parms       the record; null is one of WGS-84 at latitude 0, longitude 0, for 1 and 2 only
/// @param lat, lon    degrees, on the record's datum
/// @param x, y        out: metres
///
/// Longitudes are not wrapped about the central meridian. See also the function of the projection.
ZELLAP10_API void project_f(int projection, const tagPPARMS* parms, double lat, double lon, double* x,
                            double* y);

/// Converts plane coordinates to a position.
///
/// @param projection, parms  as in project_f
/// @param x, y               metres
/// @param lat, lon           out: degrees, on the record's datum; the longitude may pass 180
///
/// See also the function of the projection.
ZELLAP10_API void project_i(int projection, const tagPPARMS* parms, double x, double y, double* lat,
                            double* lon);
