#pragma once

#include <zellap10/platform/export.h>

/// @file
///
/// What a projection needs on one ellipsoid, and all projections behind one code.

/// Everything that a projection needs on one ellipsoid: the figures of the ellipsoid, the origin, and what
/// each projection works out once at set-up. Each projection has fields of its own, and a record serves one
/// projection at a time. Fill it with project_init or project_init2; after that it is only read, and any
/// number of threads may convert through it.
///
/// Angles in the record are RADIANS. Plane coordinates are metres with no false easting or northing: x grows
/// with longitude, y with latitude.
struct tagPPARMS {
    double a = 0.0;   ///< semi-major axis, metres
    double f = 0.0;   ///< flattening
    double e = 0.0;   ///< first eccentricity
    double e2 = 0.0;  ///< e to the 2nd, 2f - f*f
    double e4 = 0.0;  ///< e to the 4th
    double e6 = 0.0;  ///< e to the 6th

    double lat0 = 0.0;  ///< latitude of origin, radians
    double lon0 = 0.0;  ///< central meridian, radians

    double merc_k = 0.0;  ///< scale of the parallel lat0 relative to the equator; read by no calculation

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

/// Sets a record up for a projection with one origin, on the ellipsoid of a datum.
///
/// @param projection  1 Mercator, 2 polyconic, 3 transverse Mercator, 4 Lambert conformal conic; any other
///                    value fills the ellipsoid fields and nothing else
/// @param lat0        latitude of origin, degrees, north positive; 4 takes it for both its
///                    parallels too, 2 ignores it: y is then measured from the equator
/// @param lon0        central meridian, degrees, east positive
/// @param datum       0 to 119; any other number gives NaN for the ellipsoid's fields and all that rests on
///                    them, which lat0, lon0 and the lam_n of one parallel do not
/// @param parms       out: the record; null does nothing. Fields of other projections keep what they held
///
/// NaN in lat0 or lon0 makes the results NaN that rest on it.
ZELLAP10_API void project_init(int projection, double lat0, double lon0, int datum, tagPPARMS* parms);

/// Sets a record up as project_init does, with two standard parallels.
///
/// @param projection, lat0, lon0, datum, parms  as in project_init, but that 4 takes its parallels from here
/// @param lat1, lat2  standard parallels, degrees; only 4 uses them. Equal ones give one parallel; two that
///                    are symmetric about the equator, or both on it, give no cone: every result is NaN, but
///                    longitudes may be infinite
ZELLAP10_API void project_init2(int projection, double lat0, double lon0, double lat1, double lat2, int datum,
                                tagPPARMS* parms);

/// Turns a position into plane coordinates.
///
/// @param projection  the code that the record was set up with; other than 1 to 4 leaves x and y as they were
/// @param parms       the record; null stands for one of WGS-84 at latitude 0, longitude 0, which serves 1
///                    and 2 only
/// @param lat, lon    degrees, on the record's datum
/// @param x, y        out: metres
///
/// Longitudes are not wrapped about the central meridian. For the rest see the function of the projection.
ZELLAP10_API void project_f(int projection, const tagPPARMS* parms, double lat, double lon, double* x,
                            double* y);

/// Turns plane coordinates into a position.
///
/// @param projection, parms  as in project_f
/// @param x, y               metres
/// @param lat, lon           out: degrees, on the record's datum; the longitude may pass 180
///
/// For the rest see the function of the projection.
ZELLAP10_API void project_i(int projection, const tagPPARMS* parms, double x, double y, double* lat,
                            double* lon);
