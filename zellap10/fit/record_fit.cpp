#include <algorithm>
#include <cstdint>
#include <limits>

#include <zellap10/fit/direction.h>
#include <zellap10/fit/polynomial.h>
#include <zellap10/georef/geo_record.h>

namespace {

using zellap10::fit::Direction;
using zellap10::fit::find_best;
using zellap10::fit::kTerms;

constexpr double kLargest = std::numeric_limits<double>::max();

// Points that each half needs before it is fitted.
constexpr std::intptr_t kPointsOfHalf = 6;

// The polynomials of one region and the error of their fit, the largest double where there is none.
struct Fitted {
    double first[kTerms] = {};
    double second[kTerms] = {};
    double error = kLargest;
};

// Fits one direction with one region or two, whichever errs less. A second region is written only where it is
// used.
void fit_regions(Direction direction, const CRefPointList& points, double (&first)[2][kTerms],
                 double (&second)[2][kTerms], double& split) {
    Fitted whole;
    find_best(direction, points, whole.first, whole.second, &whole.error);

    CRefPointList low_points;
    CRefPointList high_points;
    double middle = 0.0;
    zellap10::fit::split(direction, points, low_points, high_points, &middle);
    Fitted low;
    Fitted high;
    if (low_points.GetCount() >= kPointsOfHalf && high_points.GetCount() >= kPointsOfHalf) {
        find_best(direction, low_points, low.first, low.second, &low.error);
        find_best(direction, high_points, high.first, high.second, &high.error);
    }

    const auto store = [&](int region, const Fitted& fitted) {
        std::copy_n(fitted.first, kTerms, first[region]);
        std::copy_n(fitted.second, kTerms, second[region]);
    };
    if (low.error + high.error < whole.error) {
        store(0, low);
        store(1, high);
        split = middle;
    } else {
        store(0, whole);
        split = kLargest;
    }
}

// Points hold the longitudes that the fit needs for as long as this object lives, whatever ends the fit.
class WrappedPoints {
public:
    explicit WrappedPoints(CGEORec& record) : record_(record) {
        record_.Check180Wrap(&record_.Points);
        record_.WrapLongitude(&record_.Points);
    }
    ~WrappedPoints() { record_.UnWrapLongitude(&record_.Points); }
    WrappedPoints(const WrappedPoints&) = delete;
    WrappedPoints& operator=(const WrappedPoints&) = delete;

private:
    CGEORec& record_;
};

}  // namespace

void CGEORec::solvepoly() {
    const WrappedPoints wrapped(*this);
    ProjectionInit();
    if (ProjCode != 0) return;
    fit_regions(zellap10::fit::pixel_to_world, Points, pwxPoly, pwyPoly, pwSplit);
    fit_regions(zellap10::fit::world_to_pixel, Points, wpxPoly, wpyPoly, wpSplit);
}
