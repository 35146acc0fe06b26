#include <algorithm>
#include <cfloat>
#include <cstdint>

#include <zellap10/fit/fits.h>
#include <zellap10/fit/polynomial.h>
#include <zellap10/georef/geo_record.h>

namespace zellap10::fit {

namespace {

// Each half reaches this part of the range past the middle.
constexpr double kOverlap = 0.1;

// The fewest points with which an order is tried.
struct Trial {
    int order;
    std::intptr_t points;
};
constexpr Trial kTrials[] = {{1, 3}, {2, 6}, {3, 10}};

}  // namespace

void split(Direction direction, const CRefPointList& source, CRefPointList& low, CRefPointList& high,
           double* split_value) {
    double smallest = DBL_MAX;
    double largest = -DBL_MAX;
    for (const CRefPoint* point : source) {
        smallest = std::min(smallest, direction(*point).b);
        largest = std::max(largest, direction(*point).b);
    }
    const double middle = (largest + smallest) * 0.5;
    const double margin = (largest - smallest) * kOverlap;
    *split_value = middle;
    for (CRefPoint* point : source) {
        if (direction(*point).b < middle + margin) low.AddTail(point);
        if (direction(*point).b > middle - margin) high.AddTail(point);
    }
}

void find_best(Direction direction, const CRefPointList& points, double* first, double* second,
               double* error) {
    double best = kNoFit;
    for (const Trial& trial : kTrials) {
        if (points.GetCount() < trial.points) break;
        double trial_first[kTerms] = {};
        double trial_second[kTerms] = {};
        double trial_error = kNoFit;
        solve(direction, trial.order, points, trial_first, trial_second, &trial_error);
        // Only a smaller error wins: not an equal one of a higher order, and not one that is no number.
        if (!(trial_error < best)) continue;
        best = *error = trial_error;
        std::copy_n(trial_first, kTerms, first);
        std::copy_n(trial_second, kTerms, second);
    }
}

}  // namespace zellap10::fit

void CGEORec::SplitListNSpw(CRefPointList* source, CRefPointList* low, CRefPointList* high,
                            double* split) const {
    zellap10::fit::split(zellap10::fit::pixel_to_world, *source, *low, *high, split);
}

void CGEORec::SplitListNSwp(CRefPointList* source, CRefPointList* low, CRefPointList* high,
                            double* split) const {
    zellap10::fit::split(zellap10::fit::world_to_pixel, *source, *low, *high, split);
}

void CGEORec::FindBestPolyPW(CRefPointList* points, double* first, double* second, double* error) const {
    zellap10::fit::find_best(zellap10::fit::pixel_to_world, *points, first, second, error);
}

void CGEORec::FindBestPolyWP(CRefPointList* points, double* first, double* second, double* error) const {
    zellap10::fit::find_best(zellap10::fit::world_to_pixel, *points, first, second, error);
}
