#pragma once

/// @file
///
/// Positions on the earth and pixels on charts and screens.

/// Helpers for chart plotters. Nothing here throws anything but std::bad_alloc, and nothing keeps global
/// state.
namespace zellap10::plotter {

/// A position on the earth. Unless a name contains `chart_datum`, positions are in WGS 84.
struct Position {
    double latitude = 0.0;   ///< DEGREES, north positive
    double longitude = 0.0;  ///< DEGREES, east positive; accepted in any turn, returned from -180 to 180
};

/// A pixel of a chart's raster. Whole numbers are the centres of pixels.
struct ChartPixel {
    double x = 0.0;  ///< column
    double y = 0.0;  ///< row
};

/// A pixel of the screen or of a bitmap. Whole numbers are the centres of pixels.
struct ScreenPixel {
    double x = 0.0;  ///< column
    double y = 0.0;  ///< row
};

/// A size on the screen, in pixels.
struct ScreenSize {
    int width = 0;   ///< columns
    int height = 0;  ///< rows
};

/// The datum of a position or of an outline.
enum class Datum {
    kWgs84,  ///< WGS 84, the datum of GPS receivers
    kChart,  ///< the datum in which the chart was drawn
};

/// Metres in a nautical mile.
constexpr double kMetresPerNauticalMile = 1852.0;

/// The longitude in the turn nearest to a reference, although it may be in that turn already.
[[nodiscard]] double moved_near(double longitude, double reference);

/// The longitude in the turn nearest to a reference. A longitude within 180 degrees of it is returned
/// unchanged.
[[nodiscard]] inline double longitude_near(double longitude, double reference) {
    const double east = longitude - reference;
    return east >= -180.0 && east <= 180.0 ? longitude : moved_near(longitude, reference);
}

/// The longitude from -180 to 180. A longitude in this range is returned unchanged.
[[nodiscard]] inline double normalize_longitude(double longitude) {
    return longitude_near(longitude, 0.0);
}

/// How far east of a meridian a longitude is, from 0 to 360.
[[nodiscard]] double degrees_east(double longitude, double meridian);

}  // namespace zellap10::plotter
