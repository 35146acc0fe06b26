#pragma once

#include <optional>
#include <string>

#include <zellap10/plotter/position.h>

/// @file
///
/// Positions that a person typed. No locale takes part: the decimal sign is a point everywhere.

namespace zellap10::plotter {

/// A position, or why there is none.
struct ParsedPosition {
    std::optional<Position> position;  ///< empty if the text is not a position
    std::string reason;                ///< for a person; empty if there is a position
};

/// Reads a typed position, such as 50 41.11N 1 17.87W, 50&deg;41'06"N 001&deg;17'52"W, 50-41.11N 001-17.87W,
/// N50.6852 W1.2978 or 50.6852, -1.2978.
///
/// Each part is degrees, degrees and minutes, or degrees, minutes and seconds. Only its last number may have
/// a decimal fraction. The latitude comes first unless letters say otherwise; letters are before or after
/// both parts. Without letters north and east are positive, and a comma, a sign or equal counts of numbers
/// separate the parts. What the texts of text.h contain is read too.
///
/// @param text  UTF-8
/// @return      latitude from -90 to 90, longitude from -180 to 180; or the first reason to refuse the text
[[nodiscard]] ParsedPosition parse_position(const std::string& text);

/// Reads a decimal number: a sign or none, and digits with at most one point. Nothing else is in the text.
[[nodiscard]] std::optional<double> parse_decimal(const std::string& text);

}  // namespace zellap10::plotter
