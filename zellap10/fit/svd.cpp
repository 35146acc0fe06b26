#include <zellap10/fit/svd.h>

#include <algorithm>
#include <cmath>

#include <zellap10/fit/matrix.h>
#include <zellap10/georef/geo_record.h>

// The algorithm of Golub and Reinsch (1970): Householder steps from the left and from the right bring A to
// bidiagonal form, the steps are gathered into U (in the place of A) and V, and QR passes with an implicit
// shift bring the superdiagonal to zero. Vectors and matrices count from 1; w is the diagonal and rv the
// superdiagonal, rv[i] standing above w[i], so that rv[1] is 0.

namespace zellap10::fit {

namespace {

constexpr int kMaxPasses = 30;  // for each singular value

struct Decomposition {
    double** a;
    int m;
    int n;
    double* w;
    double** v;
    double* rv;
    double norm;  // the largest |w[i]| + |rv[i]|, which decides what is negligible

    bool negligible(double value) const { return std::fabs(value) + norm == norm; }
};

double with_sign_of(double size, double sign) {
    return sign >= 0.0 ? std::fabs(size) : -std::fabs(size);
}

// Adds a multiple of one row to another, from column `first` to column `last`.
inline void add_multiple(double* row, double factor, const double* other, int first, int last) {
    for (int j = first; j <= last; ++j)
        row[j] += factor * other[j];
}

// Sums of the columns j to j + kWidth - 1 over some rows, each row with its weight, one beside the other in
// registers: one sum alone would wait for each of its additions.
template <int kWidth, class Weight>
inline void sum_some_columns(double** rows, int first_row, int last_row, Weight weight, int j, double* sums) {
    double sum[kWidth] = {};
    for (int k = first_row; k <= last_row; ++k) {
        const double factor = weight(k);
        const double* row = rows[k] + j;
        for (int c = 0; c < kWidth; ++c)
            sum[c] += factor * row[c];
    }
    for (int c = 0; c < kWidth; ++c)
        sums[j + c] = sum[c];
}

template <class Weight>
inline void sum_columns(double** rows, int first_row, int last_row, Weight weight, int first, int last,
                        double* sums) {
    int j = first;
    for (; j + 3 <= last; j += 4)
        sum_some_columns<4>(rows, first_row, last_row, weight, j, sums);
    if (j + 1 <= last) {
        sum_some_columns<2>(rows, first_row, last_row, weight, j, sums);
        j += 2;
    }
    if (j <= last) sum_some_columns<1>(rows, first_row, last_row, weight, j, sums);
}

// Left step on column i from row i down. Gives the diagonal element.
double left_step(const Decomposition& d, int i) {
    double** a = d.a;
    double scale = 0.0;
    for (int k = i; k <= d.m; ++k)
        scale += std::fabs(a[k][i]);
    if (scale == 0.0) return 0.0;

    double s = 0.0;
    for (int k = i; k <= d.m; ++k) {
        a[k][i] /= scale;
        s += a[k][i] * a[k][i];
    }
    const double pivot = a[i][i];
    const double g = -with_sign_of(std::sqrt(s), pivot);
    const double h = pivot * g - s;
    a[i][i] = pivot - g;
    // Row by row, as the matrix lies in memory. rv is free behind i until the steps get there, and holds what
    // each column is to be changed by.
    double* factors = d.rv;
    const auto pivot_column = [a, i](int k) { return a[k][i]; };
    sum_columns(a, i, d.m, pivot_column, i + 1, d.n, factors);
    for (int j = i + 1; j <= d.n; ++j)
        factors[j] /= h;
    for (int k = i; k <= d.m; ++k) {
        add_multiple(a[k], a[k][i], factors, i + 1, d.n);
        a[k][i] *= scale;
    }
    return scale * g;
}

// Right step on row i from column i + 1 on. Gives the superdiagonal element.
double right_step(const Decomposition& d, int i) {
    double** a = d.a;
    const int l = i + 1;
    double scale = 0.0;
    for (int k = l; k <= d.n; ++k)
        scale += std::fabs(a[i][k]);
    if (scale == 0.0) return 0.0;

    double s = 0.0;
    for (int k = l; k <= d.n; ++k) {
        a[i][k] /= scale;
        s += a[i][k] * a[i][k];
    }
    const double pivot = a[i][l];
    const double g = -with_sign_of(std::sqrt(s), pivot);
    const double h = pivot * g - s;
    a[i][l] = pivot - g;
    for (int k = l; k <= d.n; ++k)
        d.rv[k] = a[i][k] / h;
    for (int j = l; j <= d.m; ++j) {
        double sum = 0.0;
        for (int k = l; k <= d.n; ++k)
            sum += a[j][k] * a[i][k];
        for (int k = l; k <= d.n; ++k)
            a[j][k] += sum * d.rv[k];
    }
    for (int k = l; k <= d.n; ++k)
        a[i][k] *= scale;
    return scale * g;
}

void reduce_to_bidiagonal(Decomposition& d) {
    double superdiagonal = 0.0;
    d.norm = 0.0;
    for (int i = 1; i <= d.n; ++i) {
        d.rv[i] = superdiagonal;
        d.w[i] = i <= d.m ? left_step(d, i) : 0.0;
        superdiagonal = i <= d.m && i != d.n ? right_step(d, i) : 0.0;
        d.norm = std::max(d.norm, std::fabs(d.w[i]) + std::fabs(d.rv[i]));
    }
}

void gather_right_steps(const Decomposition& d) {
    for (int i = d.n; i >= 1; --i) {
        const int l = i + 1;
        if (i < d.n && d.rv[l] != 0.0) {
            const double* row = d.a[i];
            // Two divisions, because the product of the two divisors may underflow.
            for (int j = l; j <= d.n; ++j)
                d.v[j][i] = row[j] / row[l] / d.rv[l];
            for (int j = l; j <= d.n; ++j) {
                double sum = 0.0;
                for (int k = l; k <= d.n; ++k)
                    sum += row[k] * d.v[k][j];
                for (int k = l; k <= d.n; ++k)
                    d.v[k][j] += sum * d.v[k][i];
            }
        }
        for (int j = l; j <= d.n; ++j)
            d.v[i][j] = d.v[j][i] = 0.0;
        d.v[i][i] = 1.0;
    }
}

void gather_left_steps(const Decomposition& d) {
    double** a = d.a;
    for (int i = std::min(d.m, d.n); i >= 1; --i) {
        // Row i behind the diagonal starts from zero; it holds what each column is to be changed by, and at
        // the end its own change.
        double* factors = a[i];
        for (int j = i + 1; j <= d.n; ++j)
            factors[j] = 0.0;
        if (d.w[i] != 0.0) {
            const double inverse = 1.0 / d.w[i];
            const auto pivot_column = [a, i](int k) { return a[k][i]; };
            sum_columns(a, i + 1, d.m, pivot_column, i + 1, d.n, factors);
            for (int j = i + 1; j <= d.n; ++j)
                factors[j] = factors[j] / a[i][i] * inverse;
            for (int k = i + 1; k <= d.m; ++k) {
                add_multiple(a[k], a[k][i], factors, i + 1, d.n);
                a[k][i] *= inverse;
            }
            for (int j = i + 1; j <= d.n; ++j)
                factors[j] *= a[i][i];
            a[i][i] *= inverse;
        } else {
            for (int k = i; k <= d.m; ++k)
                a[k][i] = 0.0;
        }
        a[i][i] += 1.0;
    }
}

// Turns columns p and q of a matrix by the angle of this cosine and sine.
void rotate(double** matrix, int rows, int p, int q, double c, double s) {
    for (int k = 1; k <= rows; ++k) {
        double* row = matrix[k];
        const double x = row[p];
        const double z = row[q];
        row[p] = x * c + z * s;
        row[q] = z * c - x * s;
    }
}

// Where w[l - 1] is negligible, turns rv[l] to rv[k] to zero.
void cancel(const Decomposition& d, int l, int k) {
    double c = 0.0;
    double s = 1.0;
    for (int i = l; i <= k; ++i) {
        const double f = s * d.rv[i];
        d.rv[i] = c * d.rv[i];
        if (d.negligible(f)) return;
        const double g = d.w[i];
        const double h = pythag(f, g);
        d.w[i] = h;
        c = g / h;
        s = -f / h;
        rotate(d.a, d.m, l - 1, i, c, s);
    }
}

// One QR pass over the block from l to k, with a shift from its bottom two-by-two minor.
void qr_pass(const Decomposition& d, int l, int k) {
    double x = d.w[l];
    double y = d.w[k - 1];
    const double z_end = d.w[k];
    double g = d.rv[k - 1];
    double h = d.rv[k];
    double f = ((y - z_end) * (y + z_end) + (g - h) * (g + h)) / (2.0 * h * y);
    g = pythag(f, 1.0);
    f = ((x - z_end) * (x + z_end) + h * (y / (f + with_sign_of(g, f)) - h)) / x;

    double c = 1.0;
    double s = 1.0;
    for (int j = l; j < k; ++j) {
        const int i = j + 1;
        g = d.rv[i];
        y = d.w[i];
        h = s * g;
        g = c * g;
        double z = pythag(f, h);
        d.rv[j] = z;
        c = f / z;
        s = h / z;
        f = x * c + g * s;
        g = g * c - x * s;
        h = y * s;
        y *= c;
        rotate(d.v, d.n, j, i, c, s);
        z = pythag(f, h);
        d.w[j] = z;
        if (z != 0.0) {
            c = f / z;
            s = h / z;
        }
        f = c * g + s * y;
        x = c * y - s * g;
        rotate(d.a, d.m, j, i, c, s);
    }
    d.rv[l] = 0.0;
    d.rv[k] = f;
    d.w[k] = x;
}

// Splits the block that ends at k: gives the l at which it begins, with rv[l] at zero.
int split_block(const Decomposition& d, int k) {
    for (int l = k; l > 1; --l) {
        if (d.negligible(d.rv[l])) return l;
        if (d.negligible(d.w[l - 1])) {
            cancel(d, l, k);
            return l;
        }
    }
    return 1;  // rv[1] is zero from the start; saying so here keeps NaN from asking for w[0]
}

void settle(const Decomposition& d, int k) {
    for (int pass = 0; pass < kMaxPasses; ++pass) {
        const int l = split_block(d, k);
        if (l != k) {
            qr_pass(d, l, k);
            // What is no number stays none in every further pass, and all that is solved with it becomes
            // none.
            if (std::isnan(d.w[k])) return;
            continue;
        }
        if (d.w[k] < 0.0) {
            d.w[k] = -d.w[k];
            for (int j = 1; j <= d.n; ++j)
                d.v[j][k] = -d.v[j][k];
        }
        return;
    }
}

}  // namespace

void decompose(double** a, int m, int n, double* w, double** v) {
    Vector rv(n);
    Decomposition d{a, m, n, w, v, rv, 0.0};
    reduce_to_bidiagonal(d);
    gather_right_steps(d);
    gather_left_steps(d);
    for (int k = n; k >= 1; --k)
        settle(d, k);
}

void back_substitute(double** u, const double* w, double** v, int m, int n, const double* b, double* x) {
    Vector t(n);
    sum_columns(
        u, 1, m, [b](int i) { return b[i]; }, 1, n, t);
    for (int j = 1; j <= n; ++j)
        t[j] = w[j] != 0.0 ? t[j] / w[j] : 0.0;
    for (int j = 1; j <= n; ++j) {
        x[j] = 0.0;
        for (int k = 1; k <= n; ++k)
            x[j] += v[j][k] * t[k];
    }
}

double pythag(double a, double b) {
    const double p = std::fabs(a);
    const double q = std::fabs(b);
    if (p > q) return p * std::sqrt(1.0 + q / p * (q / p));
    if (q == 0.0) return 0.0;
    return q * std::sqrt(1.0 + p / q * (p / q));
}

}  // namespace zellap10::fit

void CGEORec::svdcmp(double** a, int m, int n, double* w, double** v) const {
    zellap10::fit::decompose(a, m, n, w, v);
}

void CGEORec::svbksb(double** u, double* w, double** v, int m, int n, double* b, double* x) const {
    zellap10::fit::back_substitute(u, w, v, m, n, b, x);
}

double CGEORec::pythag(double a, double b) const {
    return zellap10::fit::pythag(a, b);
}
