#pragma once

#include <cfloat>
#include <utility>
#include <vector>

#include <zellap10/fit/polynomial.h>

namespace zellap10::fit {

/// What two polynomials over the same inputs should give at one place.
struct Sample {
    double a;       ///< first input
    double b;       ///< second input, by which samples are divided into regions
    double first;   ///< result of the first polynomial
    double second;  ///< result of the second polynomial
};
using Samples = std::vector<Sample>;

/// The samples of the inverse direction: inputs and results change places.
inline Samples inverse(Samples samples) {
    for (Sample& sample : samples) {
        std::swap(sample.a, sample.first);
        std::swap(sample.b, sample.second);
    }
    return samples;
}

/// The error without a fit. A fit counts only if its error is smaller.
constexpr double kNoFit = DBL_MAX;

/// Two polynomials, and the sum of the squared residuals of both.
struct Fitted {
    double first[kTerms] = {};
    double second[kTerms] = {};
    double error = kNoFit;
};

/// Terms of a polynomial of an order, which is clamped to 0 to 5.
int terms_of(int order);

/// Least-squares fit of one order, without weights or scaling.
Fitted solve(int order, const Samples& samples);

/// The fit with the smallest error among the orders 1 (from 3 samples), 2 (from 6) and 3 (from 10); the lower
/// order if two errors are equal. The error is kNoFit if no order has a finite one.
Fitted find_best(const Samples& samples);

/// Two overlapping ranges of the second input.
struct Division {
    double middle;
    double overlap;  ///< how far each range extends past the middle
    bool is_low(const Sample& sample) const { return sample.b < middle + overlap; }
    bool is_high(const Sample& sample) const { return sample.b > middle - overlap; }
};

/// Divides at the middle of the range of the second input; a tenth of that range is the overlap.
Division divide(const Samples& samples);

/// The fit of one region, or of two and the value that separates them.
struct Regions {
    Fitted fitted[2];
    int count = 1;
    double split = DBL_MAX;
};

/// Fits one region and two; the result is the one with the smaller error.
Regions find_regions(const Samples& samples);

}  // namespace zellap10::fit
