#include <algorithm>

#include <zellap10/fit/fits.h>
#include <zellap10/fit/matrix.h>
#include <zellap10/fit/polynomial.h>
#include <zellap10/fit/svd.h>
#include <zellap10/georef/geo_record.h>

namespace zellap10::fit {

namespace {

constexpr int kTermsOfOrder[] = {1, 3, 6, 10, 15, 21};

// Singular values below this part of the largest are directions that the points say nothing of.
constexpr double kSmallestPart = 1e-10;

void drop_small_values(double* w, int n) {
    double largest = 0.0;
    for (int j = 1; j <= n; ++j)
        largest = std::max(largest, w[j]);
    const double limit = largest * kSmallestPart;
    for (int j = 1; j <= n; ++j) {
        if (w[j] < limit) w[j] = 0.0;
    }
}

// What the fit leaves of one result at one point, squared.
double squared_residual(const double* row, const double* solution, int n, double result) {
    double residual = result;
    for (int j = 1; j <= n; ++j)
        residual -= row[j] * solution[j];
    return residual * residual;
}

}  // namespace

Sample pixel_to_world(const CRefPoint& point) {
    return {static_cast<double>(point.X), static_cast<double>(point.Y), point.Longitude, point.Latitude};
}

Sample world_to_pixel(const CRefPoint& point) {
    return {point.Longitude, point.Latitude, static_cast<double>(point.X), static_cast<double>(point.Y)};
}

void solve(Direction direction, int order, const CRefPointList& points, double* first, double* second,
           double* error) {
    const int m = static_cast<int>(points.GetCount());
    const int n = kTermsOfOrder[std::clamp(order, 0, 5)];
    Matrix design(m, n);
    Matrix u(m, n);
    Vector w(n);
    Matrix v(n, n);
    Vector first_results(m);
    Vector second_results(m);
    Vector first_solution(n);
    Vector second_solution(n);

    int i = 0;
    for (const CRefPoint* point : points) {
        const Sample sample = direction(*point);
        ++i;
        int j = 0;
        const auto store = [&](double term) {
            if (++j <= n) design[i][j] = u[i][j] = term;
        };
        with_terms(sample.a, sample.b, [&store](auto... terms) { (store(terms), ...); });
        first_results[i] = sample.first;
        second_results[i] = sample.second;
    }
    decompose(u, m, n, w, v);
    drop_small_values(w, n);
    back_substitute(u, w, v, m, n, first_results, first_solution);
    back_substitute(u, w, v, m, n, second_results, second_solution);
    std::copy_n(first_solution + 1, n, first);
    std::copy_n(second_solution + 1, n, second);

    *error = 0.0;
    for (i = 1; i <= m; ++i) {
        *error += squared_residual(design[i], first_solution, n, first_results[i]);
        *error += squared_residual(design[i], second_solution, n, second_results[i]);
    }
}

}  // namespace zellap10::fit

void CGEORec::SolveSVDpw(int order, CRefPointList* points, double* first, double* second,
                         double* error) const {
    zellap10::fit::solve(zellap10::fit::pixel_to_world, order, *points, first, second, error);
}

void CGEORec::SolveSVDwp(int order, CRefPointList* points, double* first, double* second,
                         double* error) const {
    zellap10::fit::solve(zellap10::fit::world_to_pixel, order, *points, first, second, error);
}
