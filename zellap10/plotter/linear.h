#pragma once

#include <algorithm>
#include <cmath>

namespace zellap10::plotter {

/// A pair of numbers: a pixel, a place on the projected plane, a position, or a difference of two.
struct Pair {
    double first = 0.0;
    double second = 0.0;
};

inline Pair operator+(Pair a, Pair b) {
    return {a.first + b.first, a.second + b.second};
}

inline Pair operator-(Pair a, Pair b) {
    return {a.first - b.first, a.second - b.second};
}

/// The larger of the two differences.
inline double distance(Pair a, Pair b) {
    return std::max(std::fabs(a.first - b.first), std::fabs(a.second - b.second));
}

/// The linear part of a map of pairs: how much each result grows with each input.
struct Slopes {
    double first_over_first = 0.0;
    double first_over_second = 0.0;
    double second_over_first = 0.0;
    double second_over_second = 0.0;

    double determinant() const {
        return first_over_first * second_over_second - first_over_second * second_over_first;
    }

    /// The input that gives this result. Differences go in and come out, so that nothing cancels.
    Pair inverse(Pair result) const {
        const double area = determinant();
        return {(second_over_second * result.first - first_over_second * result.second) / area,
                (first_over_first * result.second - second_over_first * result.first) / area};
    }

    /// Whether the map keeps areas apart. That of points on a line, of one point and of none does not; NaN
    /// does not either.
    bool has_area() const {
        // Longitudes may be this much longer than latitudes, near a pole, but not by this much more.
        constexpr double kFlattest = 1e-6;
        const double squares = first_over_first * first_over_first + first_over_second * first_over_second +
                               second_over_first * second_over_first +
                               second_over_second * second_over_second;
        const double area = determinant();
        return area > kFlattest * squares || -area > kFlattest * squares;
    }
};

/// The slopes of a map at a place, whose result `here` is known, by differences over a step.
template <class Map>
Slopes slopes_of(Map map, Pair at, Pair here, double step) {
    const Pair right = map(Pair{at.first + step, at.second});
    const Pair down = map(Pair{at.first, at.second + step});
    return {(right.first - here.first) / step, (down.first - here.first) / step,
            (right.second - here.second) / step, (down.second - here.second) / step};
}

}  // namespace zellap10::plotter
