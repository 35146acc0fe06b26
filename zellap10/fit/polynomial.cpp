#include <zellap10/fit/polynomial.h>

#include <zellap10/georef/geo_record.h>

namespace {

using zellap10::fit::kTerms;
using zellap10::fit::sum_of;
using zellap10::fit::Terms;

}  // namespace

double CGEORec::polyfunc(int index, double a, double b) const {
    return index >= 0 && index < kTerms ? Terms(a, b).value[index] : 0.0;
}

double CGEORec::Evaluate(const double* coefficients, double a, double b) const {
    return sum_of(coefficients, Terms(a, b));
}

int CGEORec::SelectPWpoly(double, double y) const {
    return y > pwSplit ? 1 : 0;
}

int CGEORec::SelectWPpoly(double, double latitude) const {
    return latitude > wpSplit ? 1 : 0;
}

void CGEORec::pwxy(double x, double y, double* longitude, double* latitude) const {
    const Terms terms(x, y);
    if (ProjCode == 0) {
        const int region = SelectPWpoly(x, y);
        *latitude = sum_of(pwyPoly[region], terms);
        *longitude = sum_of(pwxPoly[region], terms);
    } else {
        ProjInv(sum_of(pwxAffine, terms), sum_of(pwyAffine, terms), longitude, latitude);
    }
    if (Wraps180 != 0 && *longitude < -180.0) *longitude += 360.0;
}

double CGEORec::pwx(double x, double y) const {
    double longitude = 0.0;
    double latitude = 0.0;
    pwxy(x, y, &longitude, &latitude);
    return longitude;
}

double CGEORec::pwy(double x, double y) const {
    double longitude = 0.0;
    double latitude = 0.0;
    pwxy(x, y, &longitude, &latitude);
    return latitude;
}

void CGEORec::wpxy(double longitude, double latitude, double* x, double* y) const {
    if (Wraps180 != 0 && longitude > 0.0) longitude -= 360.0;
    if (ProjCode == 0) {
        const int region = SelectWPpoly(longitude, latitude);
        const Terms terms(longitude, latitude);
        *x = sum_of(wpxPoly[region], terms);
        *y = sum_of(wpyPoly[region], terms);
        return;
    }
    double easting = 0.0;
    double northing = 0.0;
    ProjFwd(longitude, latitude, &easting, &northing);
    const Terms terms(easting, northing);
    *x = sum_of(wpxAffine, terms);
    *y = sum_of(wpyAffine, terms);
}

double CGEORec::wpx(double longitude, double latitude) const {
    double x = 0.0;
    double y = 0.0;
    wpxy(longitude, latitude, &x, &y);
    return x;
}

double CGEORec::wpy(double longitude, double latitude) const {
    double x = 0.0;
    double y = 0.0;
    wpxy(longitude, latitude, &x, &y);
    return y;
}
