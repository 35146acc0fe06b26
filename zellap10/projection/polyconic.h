#pragma once

#include <zellap10/platform/export.h>
#include <zellap10/projection/projection.h>

/// @file
///
/// The polyconic projection of the ellipsoid.
///
/// Source: Snyder (1987), Map Projections: A Working Manual, USGS Prof. Paper 1395, eqs. (18-2), (18-12),
/// (18-13) and (18-17) to (18-22), (3-21) and (4-20).

/// Writes lat0, lon0 and poly_m0 of a record whose ellipsoid fields are filled.
///
/// @param lat  latitude of origin, degrees, where y is 0 on the central meridian
/// @param lon  central meridian, degrees
/// @param parms  in and out: the record
///
/// Rounding measured: 4e-9 m of poly_m0 at most. NaN in, NaN out.
ZELLAP10_API void polyconic_init(double lat, double lon, tagPPARMS* parms);

/// Position to plane.
///
/// @param parms     the record, from polyconic_init or project_init2
/// @param lat, lon  degrees, north and east positive
/// @param x, y      out: metres, positive east of the central meridian and north of the latitude of origin
///
/// x and y are finite at the poles. The difference to the central meridian is not wrapped. NaN in, NaN out,
/// except that y on the equator does not depend on the longitude. Rounding measured: x 3e-9 m, y 3e-8 m at
/// most between latitudes 1 and 85 (10^6 positions on four ellipsoids, within 20 degrees of the central
/// meridian). Nearer to the equator 1 - cos E loses digits: y is 3e-5 m off at latitude 0.001. One sine and
/// one cosine of the latitude serve all terms. They move x and y by up to four last places from the formulas
/// word for word (x by five in 3 of 10^7 positions).
ZELLAP10_API void polyconic_f(const tagPPARMS* parms, double lat, double lon, double* x, double* y);

/// Plane to position.
///
/// @param parms     the same record
/// @param x, y      metres
/// @param lat, lon  out: degrees; neither is folded or wrapped
///
/// The iteration is for points of a chart. Far from the central meridian it may converge to a latitude
/// past 90. If it does not converge in a hundred passes, both results are NaN. The longitude is also NaN if
/// no angle has the sine that it needs. NaN in, NaN out, except that the latitude at the equator's y does not
/// depend on x.
///
/// The tolerance of the iteration limits the accuracy. Within 20 degrees of the central meridian, the
/// latitude is up to 3e-7 degrees off (3 cm) near the equator and 4e-11 from latitude 1 up, and there the
/// longitude is up to 1.1e-4 degrees off. Nearer to the equator, one degree off the central meridian, the
/// longitude is 4.3e-5 degrees off at latitude 0.01 and 6.5e-3 at 0.0001. Rounding measured: 8e-13 degrees of
/// latitude, 3e-12 of longitude at most (positions as above).
ZELLAP10_API void polyconic_i(const tagPPARMS* parms, double x, double y, double* lat, double* lon);
