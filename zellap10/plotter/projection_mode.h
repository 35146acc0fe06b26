#pragma once

#include <optional>

#include <zellap10/georef/geo_record.h>
#include <zellap10/plotter/vector.h>

namespace zellap10::plotter {

/// The affine map of projection mode from pixels to easting and northing, without its constants.
Jacobian plane_jacobian(const CGEORec& record);

/// Projection mode: longitude and latitude of a pixel, refined from those of pwxy; empty if the refinement
/// does not converge.
std::optional<Vector> projected_position_of(const CGEORec& record, Vector pixel);

/// Projection mode: the pixel of a longitude and latitude; not finite if the projection has no meaning that
/// far from its central meridian.
Vector projected_pixel_of(const CGEORec& record, Vector position);

}  // namespace zellap10::plotter
