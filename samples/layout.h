#pragma once

#include <functional>
#include <string>

/// The layout of an area on a sheet.
namespace samples {

constexpr double kPi = 3.14159265359;

/// Decimal degrees, north and east positive. On a sheet across the 180th meridian, longitudes exceed 180.
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

/// A place on the sheet: x is the column, y the row, and whole numbers are pixel centres.
struct Pixel {
    double x = 0;
    double y = 0;
};

enum class ProjectionKind { kMercator = 1, kPolyconic, kTransverseMercator, kLambert };

/// The projection of a sheet, with the parameters of a georeference file.
struct Projection {
    ProjectionKind kind = ProjectionKind::kMercator;
    bool named = true;            ///< whether the georeference file names it
    double central_meridian = 0;  ///< degrees
    double origin_lat = 0;        ///< degrees; the latitude of the scale of a Mercator chart
    double first_parallel = 0;    ///< of Lambert, degrees
    double second_parallel = 0;
    double lat_offset = 0;  ///< degrees, from the chart's datum to WGS 84, which is projected
    double lon_offset = 0;
};

/// The scale and the turn of a sheet.
struct Scale {
    int denominator = 1;
    int du = 254;             ///< pixels per inch
    double skew_degrees = 0;  ///< counter-clockwise
};

/// An area on a sheet.
struct Layout {
    Area area;
    int width = 0;   ///< of the area with its margin, pixels
    int height = 0;  ///< likewise
    double pixels_per_mile = 0;
    std::function<Pixel(Position)> to_pixel;        ///< from the chart's datum
    std::function<Pixel(Position)> wgs84_to_pixel;  ///< from WGS 84
    std::function<Position(Pixel)> to_position;     ///< in the chart's datum
};

/// The layout of an area with a margin around it.
///
/// @param corner  the upper left of the area with its margin
/// @param margin  pixels
Layout projected_layout(const Area& area, const Projection& projection, const Scale& scale, Pixel corner,
                        int margin);

}  // namespace samples
