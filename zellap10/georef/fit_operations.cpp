#include <algorithm>

#include <zellap10/fit/fits.h>
#include <zellap10/fit/matrix.h>
#include <zellap10/fit/svd.h>
#include <zellap10/georef/geo_record.h>
#include <zellap10/georef/samples.h>

// The operations of a record that only call fit/: on lists of points, vectors and matrices.

namespace {

namespace fit = zellap10::fit;
using zellap10::georef::pixel_to_world;

void write_fit(const fit::Fitted& fitted, int terms, double* first, double* second, double* error) {
    std::copy_n(fitted.first, terms, first);
    std::copy_n(fitted.second, terms, second);
    *error = fitted.error;
}

void write_best(const fit::Samples& samples, double* first, double* second, double* error) {
    const fit::Fitted best = fit::find_best(samples);
    if (best.error < fit::kNoFit) write_fit(best, fit::kTerms, first, second, error);
}

void split_list(const fit::Samples& samples, const CRefPointList& source, CRefPointList& low,
                CRefPointList& high, double* middle) {
    const fit::Division division = fit::divide(samples);
    *middle = division.middle;
    auto sample = samples.begin();
    for (CRefPoint* point : source) {
        if (division.is_low(*sample)) low.AddTail(point);
        if (division.is_high(*sample)) high.AddTail(point);
        ++sample;
    }
}

}  // namespace

void CGEORec::SolveSVDpw(int order, CRefPointList* points, double* first, double* second,
                         double* error) const {
    write_fit(fit::solve(order, pixel_to_world(*points)), fit::terms_of(order), first, second, error);
}

void CGEORec::SolveSVDwp(int order, CRefPointList* points, double* first, double* second,
                         double* error) const {
    write_fit(fit::solve(order, fit::inverse(pixel_to_world(*points))), fit::terms_of(order), first, second,
              error);
}

void CGEORec::SplitListNSpw(CRefPointList* source, CRefPointList* low, CRefPointList* high,
                            double* split) const {
    split_list(pixel_to_world(*source), *source, *low, *high, split);
}

void CGEORec::SplitListNSwp(CRefPointList* source, CRefPointList* low, CRefPointList* high,
                            double* split) const {
    split_list(fit::inverse(pixel_to_world(*source)), *source, *low, *high, split);
}

void CGEORec::FindBestPolyPW(CRefPointList* points, double* first, double* second, double* error) const {
    write_best(pixel_to_world(*points), first, second, error);
}

void CGEORec::FindBestPolyWP(CRefPointList* points, double* first, double* second, double* error) const {
    write_best(fit::inverse(pixel_to_world(*points)), first, second, error);
}

void CGEORec::svdcmp(double** a, int m, int n, double* w, double** v) const {
    fit::decompose(a, m, n, w, v);
}

void CGEORec::svbksb(double** u, double* w, double** v, int m, int n, double* b, double* x) const {
    fit::back_substitute(u, w, v, m, n, b, x);
}

double CGEORec::pythag(double a, double b) const {
    return fit::pythag(a, b);
}

double* CGEORec::dvector(long lower, long upper) const {
    return fit::new_vector(lower, upper);
}

double** CGEORec::dmatrix(long first_row, long last_row, long first_column, long last_column) const {
    return fit::new_matrix(first_row, last_row, first_column, last_column);
}

void CGEORec::free_dvector(double* vector, long lower, long) const {
    fit::delete_vector(vector, lower);
}

void CGEORec::free_dmatrix(double** matrix, long first_row, long, long, long) const {
    fit::delete_matrix(matrix, first_row);
}
