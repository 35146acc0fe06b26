#pragma once

/// @file
///
/// Texts for people, in UTF-8. The decimal sign is a point in every locale.
///
/// A number is rounded to its last digit before it is split, so that no text has 60 minutes or seconds. NaN,
/// infinity and values outside the ranges below become "---".

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include <zellap10/plotter/position.h>

namespace zellap10::plotter {

/// A latitude and a longitude, such as 50&deg;41.11'N 001&deg;17.87'W; the last digit is 18 m of latitude.
[[nodiscard]] std::string format_position(Position position);

/// A latitude, such as 50&deg;41.11'N.
///
/// @param degrees  north positive; what is rounded to 0 is north, and a latitude beyond a pole is "---"
[[nodiscard]] std::string format_latitude(double degrees);

/// A longitude, such as 001&deg;17.87'W.
///
/// @param degrees  east positive, in any turn: 181 is 179 west; what is rounded to 0 is east
[[nodiscard]] std::string format_longitude(double degrees);

/// A course or a bearing, such as 047.5&deg;.
///
/// @param degrees  clockwise from north, in any turn: -1 is 359, and what is rounded to 360 is 000.0.
///                 Empty is "---"
[[nodiscard]] std::string format_course(std::optional<double> degrees);

/// A distance: 1190 NM, 38.2 NM, 5.25 NM; below a tenth of a mile in metres, such as 93 m.
///
/// @param miles  nautical miles of 1852 m. Negative numbers have a minus sign, also if they are rounded to 0.
///               What is rounded to a billion or more is "---"
[[nodiscard]] std::string format_distance(double miles);

/// A duration: 4 min 09 s; from an hour on 5 h 03 min, from a day on 12 d 07 h.
///
/// @param seconds  negative numbers have a minus sign, also if they are rounded to 0. Empty is
///                 "---", and so is what is rounded to 2147483647 or more, where m_ttg ends too
[[nodiscard]] std::string format_duration(std::optional<double> seconds);

/// A speed, such as 12.0 kn.
///
/// @param knots  negative numbers have a minus sign, also if they are rounded to 0. Empty is "---", and so is
///               what is rounded to a billion or more
[[nodiscard]] std::string format_speed(std::optional<double> knots);

/// A text of a chart in UTF-8. Each byte that does not belong to a valid character is taken for Latin 1.
///
/// @param text     any bytes, such as the name of a chart
/// @param longest  BYTES of the result; a longer text is cut between two characters
[[nodiscard]] std::string utf8_text(std::string_view text, std::size_t longest = std::string::npos);

}  // namespace zellap10::plotter
