#pragma once

#include <algorithm>
#include <cmath>

namespace zellap10::plotter {

/// A pixel, a point of the projected plane (easting, northing), a position (longitude, latitude), or a
/// difference of two of them.
struct Vector {
    double x = 0.0;
    double y = 0.0;
};

inline Vector operator+(Vector a, Vector b) {
    return {a.x + b.x, a.y + b.y};
}

inline Vector operator-(Vector a, Vector b) {
    return {a.x - b.x, a.y - b.y};
}

/// The larger of the two absolute differences.
inline double distance(Vector a, Vector b) {
    return std::max(std::fabs(a.x - b.x), std::fabs(a.y - b.y));
}

inline bool is_finite(Vector vector) {
    return std::isfinite(vector.x) && std::isfinite(vector.y);
}

/// The Jacobian of a map of vectors.
struct Jacobian {
    double x_by_x = 0.0;
    double x_by_y = 0.0;
    double y_by_x = 0.0;
    double y_by_y = 0.0;

    double determinant() const { return x_by_x * y_by_y - x_by_y * y_by_x; }

    /// The difference of inputs that gives a difference of results.
    Vector inverse(Vector result) const {
        const double area = determinant();
        return {(y_by_y * result.x - x_by_y * result.y) / area,
                (x_by_x * result.y - y_by_x * result.x) / area};
    }

    /// Whether the map has an inverse. It has none if an element is NaN.
    bool is_regular() const {
        // Longitudes near a pole may be this much longer than latitudes.
        constexpr double kFlattest = 1e-6;
        const double squares = x_by_x * x_by_x + x_by_y * x_by_y + y_by_x * y_by_x + y_by_y * y_by_y;
        const double area = determinant();
        return area > kFlattest * squares || -area > kFlattest * squares;
    }
};

/// The Jacobian of a map by differences over a step.
///
/// @param here  map(at)
template <class Map>
Jacobian jacobian_of(Map map, Vector at, Vector here, double step) {
    const Vector right = map(Vector{at.x + step, at.y});
    const Vector down = map(Vector{at.x, at.y + step});
    return {(right.x - here.x) / step, (down.x - here.x) / step, (right.y - here.y) / step,
            (down.y - here.y) / step};
}

}  // namespace zellap10::plotter
