#pragma once

#include <functional>

/// Where on the sheet a position lies.
namespace samples {

constexpr double kPi = 3.14159265359;

/// Decimal degrees, north and east positive. Across the 180th meridian longitudes run on above 180.
struct Position {
    double lon = 0;
    double lat = 0;
};

/// A part of the earth between two meridians and two parallels.
struct Area {
    double west = 0;
    double east = 0;
    double south = 0;
    double north = 0;
};

/// A place on the sheet; whole numbers are the middles of pixels, x the column and y the row.
struct Pixel {
    double x = 0;
    double y = 0;
};

/// All that the drawing knows of the chart's projection.
using PositionToPixel = std::function<Pixel(Position)>;

/// How an area lies on a sheet.
struct Layout {
    Area area;
    int width = 0;   ///< of the sheet, pixels
    int height = 0;  ///< of the sheet, pixels
    double pixels_per_mile = 0;
    PositionToPixel to_pixel;
};

/// Pixels linear in longitude and latitude, the scales of both alike at the middle latitude.
///
/// @param width   of the sheet, pixels; its height follows
/// @param margin  pixels around the area
Layout linear_layout(const Area& area, int width, int margin);

}  // namespace samples
