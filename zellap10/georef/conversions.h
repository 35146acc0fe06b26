#pragma once

#include <zellap10/georef/geo_record.h>

namespace zellap10::georef {

/// A position in a record's own frame to the plane of a projection: the record's offsets are added, and the
/// order changes from longitude first to latitude first.
void to_plane(const CGEORec& record, int code, const PPARMS& parms, double lon, double lat, double* x,
              double* y);

}  // namespace zellap10::georef
