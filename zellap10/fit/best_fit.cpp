#include <algorithm>
#include <cstddef>

#include <zellap10/fit/fits.h>

namespace zellap10::fit {

namespace {

constexpr double kOverlap = 0.1;  // of the range

// The fewest samples with which an order is tried.
struct Trial {
    int order;
    std::size_t samples;
};
constexpr Trial kTrials[] = {{1, 3}, {2, 6}, {3, 10}};

// Samples that each of two regions needs.
constexpr std::size_t kSamplesOfRegion = 6;

}  // namespace

Fitted find_best(const Samples& samples) {
    Fitted best;
    for (const Trial& trial : kTrials) {
        if (samples.size() < trial.samples) break;
        const Fitted fitted = solve(trial.order, samples);
        // An equal error of a higher order does not win, nor does NaN.
        if (fitted.error < best.error) best = fitted;
    }
    return best;
}

Division divide(const Samples& samples) {
    double smallest = DBL_MAX;
    double largest = -DBL_MAX;
    for (const Sample& sample : samples) {
        smallest = std::min(smallest, sample.b);
        largest = std::max(largest, sample.b);
    }
    return {(largest + smallest) * 0.5, (largest - smallest) * kOverlap};
}

Regions find_regions(const Samples& samples) {
    Regions one;
    one.fitted[0] = find_best(samples);

    const Division division = divide(samples);
    Samples low;
    Samples high;
    for (const Sample& sample : samples) {
        if (division.is_low(sample)) low.push_back(sample);
        if (division.is_high(sample)) high.push_back(sample);
    }
    if (low.size() < kSamplesOfRegion || high.size() < kSamplesOfRegion) return one;
    const Regions two{{find_best(low), find_best(high)}, 2, division.middle};
    return two.fitted[0].error + two.fitted[1].error < one.fitted[0].error ? two : one;
}

}  // namespace zellap10::fit
