#include "zellap10/fit/polynomial.h"
#include <zellap10/georef/geo_record.h>

using zellap10::fit::with_terms;

double CGEORec::polyfunc(int index, double a, double b) const {
    return with_terms(a, b, [index](auto... terms) {
        const double values[zellap10::fit::kTerms] = {terms...};
        return index >= 0 && index < zellap10::fit::kTerms ? values[index] : 0.0;
    });
}

double CGEORec::Evaluate(const double* coefficients, double a, double b) const {
    return with_terms(a, b, [coefficients](auto... terms) mutable {
        double sum = 0.0;
        ((sum += *coefficients++ * terms), ...);
        return sum;
    });
}

int CGEORec::SelectPWpoly(double, double y) const {
    return y > pwSplit ? 1 : 0;
}

int CGEORec::SelectWPpoly(double, double latitude) const {
    return latitude > wpSplit ? 1 : 0;
}

void CGEORec::pwxy(double x, double y, double* longitude, double* latitude) const {
    if (ProjCode == 0) {
        const int region = SelectPWpoly(x, y);
        *latitude = Evaluate(pwyPoly[region], x, y);
        *longitude = Evaluate(pwxPoly[region], x, y);
    } else {
        ProjInv(Evaluate(pwxAffine, x, y), Evaluate(pwyAffine, x, y), longitude, latitude);
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
        *x = Evaluate(wpxPoly[region], longitude, latitude);
        *y = Evaluate(wpyPoly[region], longitude, latitude);
        return;
    }
    double easting = 0.0;
    double northing = 0.0;
    ProjFwd(longitude, latitude, &easting, &northing);
    *x = Evaluate(wpxAffine, easting, northing);
    *y = Evaluate(wpyAffine, easting, northing);
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
