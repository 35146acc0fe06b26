#include <algorithm>

#include <zellap10/fit/fits.h>
#include <zellap10/georef/geo_record.h>
#include <zellap10/georef/samples.h>

namespace {

using zellap10::fit::kTerms;
using zellap10::fit::Regions;
using zellap10::fit::Samples;

// If the fit has one region, the polynomials of the second do not change.
void store(const Regions& regions, double (&first)[2][kTerms], double (&second)[2][kTerms], double& split) {
    for (int region = 0; region < regions.count; ++region) {
        std::copy_n(regions.fitted[region].first, kTerms, first[region]);
        std::copy_n(regions.fitted[region].second, kTerms, second[region]);
    }
    split = regions.split;
}

// While this object exists, Points have the longitudes that the fit needs. A fit that fails leaves the record
// in its previous mode.
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
        const Samples samples = zellap10::georef::pixel_to_world(Points);
        const Regions pixel_to_world = zellap10::fit::find_regions(samples);
        const Regions world_to_pixel = zellap10::fit::find_regions(zellap10::fit::inverse(samples));
        // Nothing can fail from here on.
        store(pixel_to_world, pwxPoly, pwyPoly, pwSplit);
        store(world_to_pixel, wpxPoly, wpyPoly, wpSplit);
    }
    guard.set_fitted();
}
