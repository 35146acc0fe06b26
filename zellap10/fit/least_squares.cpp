#include <algorithm>

#include <zellap10/fit/fits.h>
#include <zellap10/fit/matrix.h>
#include <zellap10/fit/svd.h>

namespace zellap10::fit {

namespace {

constexpr int kTermsOfOrder[] = {1, 3, 6, 10, 15, 21};

// Singular values below this part of the largest belong to directions that the samples do not determine.
constexpr double kSmallestPart = 1e-10;

void discard_small_values(double* w, int n) {
    double largest = 0.0;
    for (int j = 1; j <= n; ++j)
        largest = std::max(largest, w[j]);
    const double limit = largest * kSmallestPart;
    for (int j = 1; j <= n; ++j) {
        if (w[j] < limit) w[j] = 0.0;
    }
}

// Of one result of one sample.
double squared_residual(const double* row, const double* solution, int n, double result) {
    double residual = result;
    for (int j = 1; j <= n; ++j)
        residual -= row[j] * solution[j];
    return residual * residual;
}

}  // namespace

int terms_of(int order) {
    return kTermsOfOrder[std::clamp(order, 0, 5)];
}

Fitted solve(int order, const Samples& samples) {
    const int m = static_cast<int>(samples.size());
    const int n = terms_of(order);
    Matrix design(m, n);
    Matrix u(m, n);
    Vector w(n);
    Matrix v(n, n);
    Vector first_results(m);
    Vector second_results(m);
    Vector first_solution(n);
    Vector second_solution(n);

    int i = 0;
    for (const Sample& sample : samples) {
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
    discard_small_values(w, n);
    back_substitute(u, w, v, m, n, first_results, first_solution);
    back_substitute(u, w, v, m, n, second_results, second_solution);

    Fitted fitted;
    std::copy_n(first_solution + 1, n, fitted.first);
    std::copy_n(second_solution + 1, n, fitted.second);
    fitted.error = 0.0;
    for (i = 1; i <= m; ++i) {
        fitted.error += squared_residual(design[i], first_solution, n, first_results[i]);
        fitted.error += squared_residual(design[i], second_solution, n, second_results[i]);
    }
    return fitted;
}

}  // namespace zellap10::fit
