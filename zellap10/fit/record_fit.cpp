#include <algorithm>
#include <cfloat>
#include <cstdint>

#include <zellap10/fit/fits.h>
#include <zellap10/fit/polynomial.h>
#include <zellap10/georef/geo_record.h>

namespace {

using zellap10::fit::Direction;
using zellap10::fit::find_best;
using zellap10::fit::kTerms;

// As the place where two regions part: there is only one.
constexpr double kOneRegion = DBL_MAX;

// Points that each half needs before it is fitted.
constexpr std::intptr_t kPointsOfHalf = 6;

// The polynomials of one region and the error of their fit.
struct Fitted {
    double first[kTerms] = {};
    double second[kTerms] = {};
    double error = zellap10::fit::kNoFit;
};

// What the fit of one direction found: polynomials of one region, or of two and the place where they part.
struct Regions {
    Fitted fitted[2];
    int count = 1;
    double split = kOneRegion;
};

// Fits one direction with one region or two, whichever errs less.
Regions fit_regions(Direction direction, const CRefPointList& points) {
    Regions whole;
    find_best(direction, points, whole.fitted[0].first, whole.fitted[0].second, &whole.fitted[0].error);

    CRefPointList low_points;
    CRefPointList high_points;
    Regions halves;
    halves.count = 2;
    zellap10::fit::split(direction, points, low_points, high_points, &halves.split);
    auto& [low, high] = halves.fitted;
    if (low_points.GetCount() >= kPointsOfHalf && high_points.GetCount() >= kPointsOfHalf) {
        find_best(direction, low_points, low.first, low.second, &low.error);
        find_best(direction, high_points, high.first, high.second, &high.error);
    }
    return low.error + high.error < whole.fitted[0].error ? halves : whole;
}

// A second region is written only where it is used.
void store(const Regions& regions, double (&first)[2][kTerms], double (&second)[2][kTerms], double& split) {
    for (int region = 0; region < regions.count; ++region) {
        std::copy_n(regions.fitted[region].first, kTerms, first[region]);
        std::copy_n(regions.fitted[region].second, kTerms, second[region]);
    }
    split = regions.split;
}

// Points hold the longitudes that the fit needs for as long as this object lives, whatever ends the fit; one
// that does not end well leaves the record in the mode in which it was.
class FitGuard {
public:
    explicit FitGuard(CGEORec& record)
        : record_(record), wraps_before_(record.Wraps180), code_before_(record.ProjCode) {
        record_.Check180Wrap(&record_.Points);
        record_.WrapLongitude(&record_.Points);
    }
    ~FitGuard() {
        record_.UnWrapLongitude(&record_.Points);
        if (fitted_) return;
        record_.Wraps180 = wraps_before_;
        record_.ProjCode = code_before_;
    }
    FitGuard(const FitGuard&) = delete;
    FitGuard& operator=(const FitGuard&) = delete;

    void set_fitted() { fitted_ = true; }

private:
    CGEORec& record_;
    int wraps_before_;
    int code_before_;
    bool fitted_ = false;
};

}  // namespace

void CGEORec::solvepoly() {
    FitGuard guard(*this);
    ProjectionInit();
    if (ProjCode == 0) {
        const Regions pixel_to_world = fit_regions(zellap10::fit::pixel_to_world, Points);
        const Regions world_to_pixel = fit_regions(zellap10::fit::world_to_pixel, Points);
        // Nothing can fail from here on.
        store(pixel_to_world, pwxPoly, pwyPoly, pwSplit);
        store(world_to_pixel, wpxPoly, wpyPoly, wpSplit);
    }
    guard.set_fitted();
}
