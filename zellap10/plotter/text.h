#pragma once

#include <string>

#include <zellap10/plotter/position.h>

/// @file
///
/// Texts for people, in UTF-8. No locale takes part: the decimal sign is a point everywhere.
///
/// A number is rounded to its last digit before it is taken apart, so that no text has 60 minutes or seconds.
/// NaN, infinity and what a text names beside them are "---".

namespace zellap10::plotter {

/// A latitude and a longitude, such as 50&deg;41.11'N 001&deg;17.87'W; the last digit is 18 m of latitude.
std::string position_text(const Position& position);

/// A latitude, such as 50&deg;41.11'N.
///
/// @param degrees  north positive; what is rounded to 0 is north, and what lies beyond a pole is "---"
std::string latitude_text(double degrees);

/// A longitude, such as 001&deg;17.87'W.
///
/// @param degrees  east positive, in any turn: 181 is 179 west; what is rounded to 0 is east
std::string longitude_text(double degrees);

/// A course or a bearing, such as 047.5&deg;.
///
/// @param degrees  clockwise from north, in any turn: -1 is 359, and what is rounded to 360 is 000.0
std::string course_text(double degrees);

/// A distance: 1190 NM, 38.2 NM, 5.25 NM; below a tenth of a mile metres, such as 93 m.
///
/// @param miles  nautical miles of 1852 m; a negative number has a minus sign. From a billion on it is "---"
std::string distance_text(double miles);

/// A time to go: 4 min 09 s; from an hour on 5 h 03 min, from a day on 12 d 07 h.
///
/// @param seconds  a negative number has a minus sign. From 2147483647 on, where m_ttg ends too, it is "---"
std::string duration_text(double seconds);

}  // namespace zellap10::plotter
