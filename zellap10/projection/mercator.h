#pragma once

#include <zellap10/platform/export.h>
#include <zellap10/projection/projection.h>

/// @file
///
/// The Mercator projection of the ellipsoid. The scale is that of the equator for every latitude of origin.
///
/// Source: Snyder (1987), Map Projections: A Working Manual, USGS Prof. Paper 1395, eqs. (7-6) to (7-12).

/// Writes lat0, lon0 and merc_k of a record whose ellipsoid fields are filled.
///
/// @param lat  latitude of origin, degrees; it does not affect x or y
/// @param lon  central meridian, degrees
/// @param parms  in and out: the record
///
/// Rounding measured: 2e-16 of merc_k at most. NaN in, NaN out.
ZELLAP10_API void mercator_init(double lat, double lon, tagPPARMS* parms);

/// Position to plane.
///
/// @param parms     the record, from mercator_init or project_init2
/// @param lat, lon  degrees, north and east positive
/// @param x, y      out: metres; x from the central meridian, not wrapped, y from the equator
///
/// At latitude 0, y is 6.6e-07 m; at 90 it is large and finite, at -90 minus infinity. Latitudes past the
/// poles have no meaning, but are not refused. NaN in, NaN out. Rounding measured: x 4e-9 m, y 9e-8 m at most
/// up to latitude 89 (10^6 positions on four ellipsoids).
ZELLAP10_API void mercator_f(const tagPPARMS* parms, double lat, double lon, double* x, double* y);

/// Plane to position.
///
/// @param parms     the same record
/// @param x, y      metres
/// @param lat, lon  out: degrees; the longitude is not wrapped. y = 0 gives a latitude of 6e-12
///
/// NaN in, NaN out; an infinite y gives a pole. If the iteration has not converged after a thousand passes,
/// which takes an eccentricity near or above 1, the latitude is NaN. The iteration stops up to 7e-10 degrees
/// off the latitude. Rounding measured: 5e-14 degrees at most (positions as above).
ZELLAP10_API void mercator_i(const tagPPARMS* parms, double x, double y, double* lat, double* lon);
