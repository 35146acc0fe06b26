#pragma once

#include <optional>

#include <zellap10/georef/geo_record.h>

namespace zellap10::plotter {

/// A place on the earth, in DEGREES. Which datum it is in, the operation that takes or gives it says.
struct Position {
    double latitude = 0.0;   ///< north positive
    double longitude = 0.0;  ///< east positive
};

/// A place on a chart's picture, in pixels of the chart.
struct Pixel {
    double x = 0.0;  ///< column
    double y = 0.0;  ///< row
};

/// Whether a record ties pixels to positions: its chart was opened wholly, with a georeference file whose
/// points or projection a fit could use.
bool is_fitted(const CGEORec& record);

/// The position of a pixel, in the chart's own datum; it is that of pwxy.
///
/// @param record  the record of a chart or of an inset
/// @param pixel   any pixel; outside the picture the position is extrapolated
/// @return        the position; none on a record without a fit and where the arithmetic gives no finite
/// numbers
std::optional<Position> position_of(const CGEORec& record, Pixel pixel);

}  // namespace zellap10::plotter
