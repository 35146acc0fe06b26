#pragma once

#include <cfloat>

#include <zellap10/georef/ref_point.h>

namespace zellap10::fit {

/// The error where there is no fit; a fit counts only with a smaller one.
constexpr double kNoFit = DBL_MAX;

/// A point as one direction of the transforms sees it.
struct Sample {
    double a;       ///< first input
    double b;       ///< second input, by which a chart is divided into regions
    double first;   ///< first result
    double second;  ///< second result
};

/// How one direction reads a point; all else about the two directions is the same.
using Direction = Sample (*)(const CRefPoint& point);

/// Pixel x and y to longitude and latitude.
Sample pixel_to_world(const CRefPoint& point);

/// Longitude and latitude to pixel x and y.
Sample world_to_pixel(const CRefPoint& point);

/// See CGEORec::SolveSVDpw.
void solve(Direction direction, int order, const CRefPointList& points, double* first, double* second,
           double* error);

/// See CGEORec::SplitListNSpw.
void split(Direction direction, const CRefPointList& source, CRefPointList& low, CRefPointList& high,
           double* split_value);

/// See CGEORec::FindBestPolyPW.
void find_best(Direction direction, const CRefPointList& points, double* first, double* second,
               double* error);

}  // namespace zellap10::fit
