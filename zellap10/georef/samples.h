#pragma once

#include <cstddef>

#include <zellap10/fit/fits.h>
#include <zellap10/georef/ref_point.h>

namespace zellap10::georef {

/// Samples of pixel x and y to longitude and latitude, in the order of the points.
inline fit::Samples pixel_to_world(const CRefPointList& points) {
    fit::Samples samples;
    samples.reserve(static_cast<std::size_t>(points.GetCount()));
    for (const CRefPoint* point : points) {
        samples.push_back({static_cast<double>(point->X), static_cast<double>(point->Y), point->Longitude,
                           point->Latitude});
    }
    return samples;
}

}  // namespace zellap10::georef
