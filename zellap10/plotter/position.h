#pragma once

#include <optional>

#include <zellap10/georef/geo_record.h>

/// What every plotter writes anyway, on the library's public interface alone. Nothing here is thrown but
/// std::bad_alloc, and nothing keeps a state; what only reads a record may be called from several threads.
namespace zellap10::plotter {

/// A place on the earth, in DEGREES. Which datum it is in, the operation that takes or gives it says.
struct Position {
    double latitude = 0.0;   ///< north positive
    double longitude = 0.0;  ///< east positive; given in any turn, answered from -180 to 180
};

/// A place on a chart's picture, in pixels of the chart.
struct Pixel {
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
    int width = 0;
    int height = 0;
};

/// Whether a record ties pixels to positions: its chart was opened wholly, with a georeference file whose
/// points span an area. A chart object that was closed and opened anew for information only still has the
/// fit of its earlier chart.
bool is_fitted(const CGEORec& record);

/// The position of a pixel, in the chart's own datum. It is that of pwxy; in projection mode, where the
/// inverse formulas of pwxy stop millimetres short, and metres in the longitude of a wide polyconic chart, it
/// is finished to a rounding.
///
/// @param record  the record of a chart or of an inset
/// @param pixel   any pixel; outside the picture the position is extrapolated
/// @return        the position; none on a record without a fit, and where the arithmetic gives no numbers
std::optional<Position> position_of(const CGEORec& record, Pixel pixel);

/// The pixel of a position in the chart's own datum: that whose position_of it is, to 1e-6 pixel, on charts
/// of any scale. Where wpxy is right the two agree.
///
/// In projection mode that is the forward projection and the inverse of the flat map of pwxy, in about
/// the time of wpxy. In direct mode Newton's steps on pwxy lead there. Where pwxy has two regions a position
/// near their seam may lie in both, and then a pixel of whole numbers goes before others; one that lies in
/// neither gets the pixel that is beyond the seam by the least.
///
/// @param record    the record of a chart or of an inset
/// @param position  any position; outside the picture the pixel is extrapolated
/// @return          the pixel, not rounded; none on a record without a fit, and where no pixel is found
std::optional<Pixel> pixel_of(const CGEORec& record, Position position);

/// A position of the chart's own datum in WGS 84, by the record's two offsets.
Position to_wgs84(const CGEORec& record, Position position);

/// A position of WGS 84 in the chart's own datum, by the record's two offsets.
Position from_wgs84(const CGEORec& record, Position position);

}  // namespace zellap10::plotter
