#pragma once

#include <zellap10/platform/export.h>

/// @file
///
/// Advances positions along rhumb lines. Units, signs and source as in course.h; speeds are knots, times
/// seconds, courses degrees clockwise from north, from 0 up to but not including 360.

/// The time to go from one position to another.
///
/// @param lat1, lon1, lat2, lon2  degrees, as in m_distance
/// @param speed                   knots; negative for a negative time
/// @return                        seconds, truncated and clamped to -2147483648 to 2147483647; the latter at
/// a
///                                speed of 0; 0 for NaN, also for distance 0 at speed 0
ZELLAP10_API long m_ttg(double lat1, double lon1, double lat2, double lon2, double speed);

/// Advances a position by a distance on a course.
///
/// @param lat, lon  in and out: degrees. The longitude may pass 180, the latitude 90. Past a pole, neither
/// has
///                  a meaning; at the south pole the longitude may be infinite or NaN
/// @param distance  nautical miles, negative backwards
/// @param course    degrees; within 0.01 of 90 or 270 the position stays on its parallel. For a course out of
///                  range, such as a negative one, the longitude has the wrong sign in two quadrants
/// @return          the argument `distance`
///
/// NaN in an argument makes results that depend on it NaN. The latitude does not depend on the longitude, and
/// along a parallel not on the distance. Rounding measured: 2e-14 degrees of latitude; 1e-11 of longitude for
/// courses a degree or more off east and west, 2e-8 along a parallel (10^6 advances up to 1000 miles from
/// latitudes up to 80).
ZELLAP10_API double m_advance_d(double* lat, double* lon, double distance, double course);

/// Advances a position by a time at a speed on a course.
///
/// @param lat, lon  in and out: degrees, as in m_advance_d
/// @param time      seconds
/// @param speed     knots
/// @param course    degrees, as in m_advance_d
/// @return          the distance covered, nautical miles
///
/// Rounding as in m_advance_d.
ZELLAP10_API double m_advance_t(double* lat, double* lon, double time, double speed, double course);

/// Moves a position to the foot of its perpendicular on a rhumb line, in the plane of longitude and
/// meridional parts.
///
/// @param lat0, lon0  a position of the line, degrees
/// @param lat, lon    in: the position, degrees; out: its foot on the line, not reduced
/// @param theta       direction of the line, RADIANS counter-clockwise from east, as m_theta gives it
///
/// Rounding measured: 2e-13 degrees at most (10^6 positions up to latitude 80), in addition to the error of
/// m_parts_inv.
ZELLAP10_API void m_line(double lat0, double lon0, double* lat, double* lon, double theta);
