#pragma once

#include <vector>

#include <zellap10/georef/geo_record.h>
#include <zellap10/plotter/outline.h>
#include <zellap10/plotter/pixel_outline.h>

namespace zellap10::plotter {

/// The pixels that an inset hides on its chart: its reference points and 80 pixels around, where its frame
/// is. As InsetRect, but the record needs no fit. Without corners if the inset has no points.
[[nodiscard]] PixelOutline inset_area(const CGEORec& inset);

/// The areas of all insets of a chart in WGS 84.
///
/// @param base  of a chart that was opened for information only; it is fitted
/// @param size  of the chart
[[nodiscard]] std::vector<Outline> hidden_by_insets(CGEORec& base, CSize size);

}  // namespace zellap10::plotter
