#pragma once

#include <zellap10/georef/geo_record.h>

namespace zellap10::georef {

/// Converts a position in the chart's own datum, plus the record's offsets, to the plane of a projection.
void to_plane(const CGEORec& record, int code, const PPARMS& parms, double lon, double lat, double* x,
              double* y);

}  // namespace zellap10::georef
