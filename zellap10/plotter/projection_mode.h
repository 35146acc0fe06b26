#pragma once

#include <cmath>
#include <limits>
#include <optional>

#include <zellap10/georef/geo_record.h>
#include <zellap10/platform/angle.h>
#include <zellap10/plotter/vector.h>

namespace zellap10::plotter {

/// The affine map of projection mode from pixels to easting and northing, without its constants.
inline Jacobian plane_jacobian(const CGEORec& record) {
    return {record.pwxAffine[1], record.pwxAffine[2], record.pwyAffine[1], record.pwyAffine[2]};
}

inline Vector project(const CGEORec& record, Vector position) {
    double easting = 0.0;
    double northing = 0.0;
    record.ProjFwd(position.x, position.y, &easting, &northing);
    return {easting, northing};
}

/// Whether the projection has a meaning that far from its central meridian.
inline bool is_in_reach(const CGEORec& record, Vector position) {
    constexpr int kPolyconic = 2;
    constexpr int kTransverseMercator = 3;
    if (record.ProjCode != kPolyconic && record.ProjCode != kTransverseMercator) return true;
    const double meridian = record.ProjParms.lon0 * platform::RAD_TO_DEG;
    const double reach = record.ProjCode == kTransverseMercator ? 90.0 : 180.0;
    return std::fabs(position.x + record.LongitudeOffset - meridian) <= reach;
}

/// Projection mode: longitude and latitude of a pixel, refined from those of ProjInv; empty if the refinement
/// does not converge.
std::optional<Vector> projected_position_of(const CGEORec& record, Vector pixel);

/// Projection mode: the pixel of a longitude and latitude; not finite if the position is out of reach.
inline Vector projected_pixel_of(const CGEORec& record, Vector position) {
    constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
    if (!is_in_reach(record, position)) return {kNone, kNone};
    return plane_jacobian(record).inverse(project(record, position) -
                                          Vector{record.pwxAffine[0], record.pwyAffine[0]});
}

}  // namespace zellap10::plotter
