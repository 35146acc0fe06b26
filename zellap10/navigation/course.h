#pragma once

#include <zellap10/platform/export.h>

/// @file
///
/// Rhumb-line course and distance, by meridional parts of one fixed ellipsoid (that of Clarke, 1866).
/// Distances are nautical miles, 60 to the degree of latitude.
///
/// Latitudes and longitudes are decimal degrees, north and east positive, unless a function says radians.
/// Bearings are degrees clockwise from north, from 0 up to but not including 360. Infinity and NaN pass
/// through. The parts of the north pole are 102765.6, those of the south pole minus infinity. Rounding was
/// measured over 10^6 positions, up to latitude 85.
///
/// Source: Bowditch, The American Practical Navigator, Mercator sailing and the table of meridional parts.
/// Two terms of the formula have the opposite sign here.

/// The bearing from one position to another.
///
/// @param lat1, lon1, lat2, lon2  degrees. The difference of longitude is not reduced: across the 180th
///                                meridian the bearing points the other way around the earth
/// @return                        degrees; 90 from a position to itself
///
/// NaN between two south poles. Rounding measured: 2e-12 degrees at most; 2e-12 / d if the latitudes are d
/// degrees apart and d is below 1.
ZELLAP10_API double m_bearing(double lat1, double lon1, double lat2, double lon2);

/// The direction from one position to another on the plane of longitude and meridional parts.
///
/// @param lat1, lon1, lat2, lon2  degrees, the difference of longitude as in m_bearing
/// @return                        RADIANS counter-clockwise from east, -pi to pi; 0 from a position to itself
///
/// Rounding measured: 2e-14 rad at most, and 2e-14 / d as in m_bearing.
ZELLAP10_API double m_theta(double lat1, double lon1, double lat2, double lon2);

/// The distance from one position to another along the rhumb line.
///
/// @param lat1, lon1, lat2, lon2  degrees; the difference of longitude is reduced to the short way around
///                                the earth if it is below 540
/// @return                        nautical miles, 0 from a position to itself
///
/// Only exactly equal latitudes count as a parallel: for latitudes one last place apart, the result is 0 or
/// far off. To and from the south pole, the distance is that of the meridian; along a pole it has no meaning.
/// Rounding measured, relative to the distance: 3e-10 at most along a parallel, 6e-14 / d between latitudes d
/// degrees apart.
ZELLAP10_API double m_distance(double lat1, double lon1, double lat2, double lon2);

/// The distance and the bearing from one position to another.
///
/// @param lat1, lon1, lat2, lon2  degrees
/// @param bearing                 out: degrees. Unlike in m_bearing, a difference of longitude past 180 is
///                                reduced once by 360, enough for longitudes from -180 to 180
/// @return                        nautical miles, as m_distance
///
/// Rounding as in m_bearing and m_distance.
ZELLAP10_API double m_b_d(double lat1, double lon1, double lat2, double lon2, double* bearing);

/// The bearing of a vector.
///
/// @param x, y  eastward and northward component, in the same unit
/// @return      degrees; 90 for the zero vector
///
/// Rounding measured: 6e-14 degrees at most. Our pi is larger than that of the arctangent, so west is 1.2e-11
/// past 270, north-west 9e-12 past 315 and south-west 9e-12 short of 225. Due north is +0.
ZELLAP10_API double m_angle(double x, double y);

/// The meridional parts from one latitude to another.
///
/// @param lat1, lat2  RADIANS
/// @return            minutes of arc on the equator, parts of lat2 minus parts of lat1
///
/// Rounding: twice that of m_parts.
ZELLAP10_API double m_diff(double lat1, double lat2);

/// The meridional parts of a latitude.
///
/// @param lat  RADIANS
/// @return     minutes of arc on the equator; 3.6e-10 at the equator
///
/// Rounding measured: 4e-11 at most up to latitude 88.
ZELLAP10_API double m_parts(double lat);

/// The latitude that has these meridional parts.
///
/// @param minutes  minutes of arc on the equator
/// @return         DEGREES, -90 to 90
///
/// The three refinements leave up to 3e-8 degrees. Rounding measured: 4e-14 degrees at most.
ZELLAP10_API double m_parts_inv(double minutes);
