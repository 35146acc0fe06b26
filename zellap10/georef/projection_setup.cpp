#include <algorithm>
#include <cfloat>

#include <zellap10/fit/fits.h>
#include <zellap10/georef/conversions.h>
#include <zellap10/georef/samples.h>
#include <zellap10/platform/number_text.h>
#include <zellap10/platform/text_compare.h>

namespace {

namespace fit = zellap10::fit;

// The datum row whose ellipsoid every record uses.
constexpr int kRecordDatum = 17;

struct ProjectionName {
    const char* front;  // of the entry
    int code;
};

// In the order of comparison.
constexpr ProjectionName kProjectionNames[] = {
    {"MERCATOR", 1}, {"POLYCONIC", 2}, {"UTM", 3}, {"TRANSVERSE MERCATOR", 3}, {"LAMBERT", 4}};

int code_of(const char* name) {
    for (const ProjectionName& known : kProjectionNames) {
        if (zellap10::platform::begins_with_any_case(name, known.front)) return known.code;
    }
    return 0;
}

// The number of a text, or the other value if the text is empty. A blank text is 0.
double number_or(const CString& text, double otherwise) {
    return text.IsEmpty() ? otherwise : zellap10::platform::number_of(text);
}

}  // namespace

void CGEORec::MinMeanMaxLL() {
    MinLat = MinLon = DBL_MAX;
    MaxLat = MaxLon = -DBL_MAX;
    for (const CRefPoint* vertex : Vertices) {
        if (vertex->Longitude < MinLon) MinLon = vertex->Longitude;
        if (vertex->Longitude > MaxLon) MaxLon = vertex->Longitude;
        if (vertex->Latitude < MinLat) MinLat = vertex->Latitude;
        if (vertex->Latitude > MaxLat) MaxLat = vertex->Latitude;
    }
    MeanLat = (MaxLat + MinLat) * 0.5;
    MeanLon = (MaxLon + MinLon) * 0.5;
}

void CGEORec::ProjectionInit() {
    const int code = Wraps180 == 0 ? code_of(Projection) : 0;
    if (code == 0) {
        ProjCode = 0;
        return;
    }
    MinMeanMaxLL();
    PPARMS parms = ProjParms;
    project_init2(code, number_or(P1, MeanLat), number_or(PP, MeanLon), number_or(P5, MeanLat),
                  number_or(P6, MeanLat), kRecordDatum, &parms);

    fit::Samples samples = zellap10::georef::pixel_to_world(Points);
    for (fit::Sample& sample : samples) {
        const double longitude = sample.first;
        const double latitude = sample.second;
        zellap10::georef::to_plane(*this, code, parms, longitude, latitude, &sample.first, &sample.second);
    }
    const fit::Fitted pixel_to_plane = fit::solve(1, samples);
    const fit::Fitted plane_to_pixel = fit::solve(1, fit::inverse(samples));

    // Nothing can fail from here on.
    ProjCode = code;
    ProjParms = parms;
    std::copy_n(pixel_to_plane.first, fit::kTerms, pwxAffine);
    std::copy_n(pixel_to_plane.second, fit::kTerms, pwyAffine);
    std::copy_n(plane_to_pixel.first, fit::kTerms, wpxAffine);
    std::copy_n(plane_to_pixel.second, fit::kTerms, wpyAffine);
}
