#pragma once

#include <functional>
#include <string>

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

enum class Projecting { kMercator = 1, kPolyconic, kTransverseMercator, kLambert };

/// The projection that a sheet is drawn on, as a record of a georeference file sets it up.
struct Projection {
    Projecting kind = Projecting::kMercator;
    bool named = true;            ///< in the georeference file
    double central_meridian = 0;  ///< degrees
    double origin_lat = 0;        ///< degrees; a Mercator chart has its scale here
    double first_parallel = 0;    ///< of Lambert, degrees
    double second_parallel = 0;
    double lat_offset = 0;  ///< degrees, from the chart's datum to WGS 84, on which the projection is set up
    double lon_offset = 0;
};

/// How the plane of the projection lies on the sheet.
struct Scale {
    int denominator = 1;
    int du = 254;             ///< pixels an inch
    double skew_degrees = 0;  ///< by which the sheet lies askew, counter-clockwise
};

/// How an area lies on a sheet.
struct Layout {
    Area area;
    int width = 0;   ///< of the area with its margin, pixels
    int height = 0;  ///< likewise
    double pixels_per_mile = 0;
    std::function<Pixel(Position)> to_pixel;        ///< from the chart's datum
    std::function<Pixel(Position)> wgs84_to_pixel;  ///< from WGS 84
    std::function<Position(Pixel)> to_position;     ///< in the chart's datum
};

/// Lays an area on a sheet.
///
/// @param corner  the upper left of the area with its margin
/// @param margin  pixels around the area
Layout projected_layout(const Area& area, const Projection& projection, const Scale& scale, Pixel corner,
                        int margin);

}  // namespace samples
