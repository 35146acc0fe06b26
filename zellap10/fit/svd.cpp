#include "zellap10/fit/svd.h"

#include <algorithm>
#include <cmath>
#include <type_traits>
#include <utility>

#include <zellap10/fit/matrix.h>

// The algorithm of Golub and Reinsch (1970): Householder steps from the left and from the right reduce A to
// bidiagonal form, the steps are accumulated in U (in the place of A) and V, and QR passes with an implicit
// shift reduce the superdiagonal to zero. Vectors and matrices count from 1. w is the diagonal and rv the
// superdiagonal, with rv[i] above w[i], so rv[1] is 0. Nearly all steps work along columns, so both matrices
// are stored by columns here: a[j][k] is the element of column j in row k.

namespace zellap10::fit {

namespace {

constexpr int kMaxPasses = 30;  // for each singular value

struct Decomposition {
    double** a;  // A, which becomes U
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

// Works from first to last in steps of four, then two and one: independent sums in registers need not wait
// for each other.
template <class Work>
inline void by_fours(int first, int last, Work work) {
    int j = first;
    for (; j + 3 <= last; j += 4)
        work(std::integral_constant<int, 4>(), j);
    if (j + 1 <= last) {
        work(std::integral_constant<int, 2>(), j);
        j += 2;
    }
    if (j <= last) work(std::integral_constant<int, 1>(), j);
}

// Calls `use` with the product of one vector and each column from first to last, over the rows `from` to
// `to`.
template <class Use>
inline void products(const double* vector, double* const* columns, int from, int to, int first, int last,
                     Use use) {
    by_fours(first, last, [&](auto width, int j) {
        double sum[decltype(width)::value] = {};
        for (int k = from; k <= to; ++k) {
            for (int c = 0; c < width; ++c)
                sum[c] += vector[k] * columns[j + c][k];
        }
        for (int c = 0; c < width; ++c)
            use(j + c, sum[c]);
    });
}

// Adds a multiple of `other` to `column`, from row `from` to row `to`.
inline void add_multiple(double* column, double factor, const double* other, int from, int to) {
    for (int k = from; k <= to; ++k)
        column[k] += other[k] * factor;
}

// Left step on column i from row i down. Returns the diagonal element.
double left_step(const Decomposition& d, int i) {
    double* column = d.a[i];
    double scale = 0.0;
    for (int k = i; k <= d.m; ++k)
        scale += std::fabs(column[k]);
    if (scale == 0.0) return 0.0;

    double s = 0.0;
    for (int k = i; k <= d.m; ++k) {
        column[k] /= scale;
        s += column[k] * column[k];
    }
    const double pivot = column[i];
    const double g = -with_sign_of(std::sqrt(s), pivot);
    const double h = pivot * g - s;
    column[i] = pivot - g;
    products(column, d.a, i, d.m, i + 1, d.n,
             [&](int j, double product) { add_multiple(d.a[j], product / h, column, i, d.m); });
    for (int k = i; k <= d.m; ++k)
        column[k] *= scale;
    return scale * g;
}

// Right step on row i from column i + 1 on. Returns the superdiagonal element.
double right_step(const Decomposition& d, int i) {
    double** a = d.a;
    const int l = i + 1;
    double scale = 0.0;
    for (int k = l; k <= d.n; ++k)
        scale += std::fabs(a[k][i]);
    if (scale == 0.0) return 0.0;

    double s = 0.0;
    for (int k = l; k <= d.n; ++k) {
        a[k][i] /= scale;
        s += a[k][i] * a[k][i];
    }
    const double pivot = a[l][i];
    const double g = -with_sign_of(std::sqrt(s), pivot);
    const double h = pivot * g - s;
    a[l][i] = pivot - g;
    for (int k = l; k <= d.n; ++k)
        d.rv[k] = a[k][i] / h;
    by_fours(l, d.m, [&](auto height, int j) {
        double sum[decltype(height)::value] = {};
        for (int k = l; k <= d.n; ++k) {
            for (int r = 0; r < height; ++r)
                sum[r] += a[k][j + r] * a[k][i];
        }
        for (int k = l; k <= d.n; ++k) {
            for (int r = 0; r < height; ++r)
                a[k][j + r] += sum[r] * d.rv[k];
        }
    });
    for (int k = l; k <= d.n; ++k)
        a[k][i] *= scale;
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
        double* column = d.v[i];
        if (i < d.n && d.rv[l] != 0.0) {
            // Two divisions, because the product of the divisors may underflow.
            for (int j = l; j <= d.n; ++j)
                column[j] = d.a[j][i] / d.a[l][i] / d.rv[l];
            for (int j = l; j <= d.n; ++j) {
                double sum = 0.0;
                for (int k = l; k <= d.n; ++k)
                    sum += d.a[k][i] * d.v[j][k];
                add_multiple(d.v[j], sum, column, l, d.n);
            }
        }
        for (int j = l; j <= d.n; ++j)
            d.v[j][i] = column[j] = 0.0;
        column[i] = 1.0;
    }
}

void gather_left_steps(const Decomposition& d) {
    for (int i = std::min(d.m, d.n); i >= 1; --i) {
        double* column = d.a[i];
        for (int j = i + 1; j <= d.n; ++j)
            d.a[j][i] = 0.0;
        if (d.w[i] != 0.0) {
            const double inverse = 1.0 / d.w[i];
            products(column, d.a, i + 1, d.m, i + 1, d.n, [&](int j, double product) {
                const double factor = product / column[i] * inverse;
                d.a[j][i] = factor * column[i];
                add_multiple(d.a[j], factor, column, i + 1, d.m);
            });
            for (int k = i; k <= d.m; ++k)
                column[k] *= inverse;
        } else {
            for (int k = i; k <= d.m; ++k)
                column[k] = 0.0;
        }
        column[i] += 1.0;
    }
}

// Rotates two columns by the angle with this cosine and sine.
void rotate(double* p, double* q, int rows, double c, double s) {
    for (int k = 1; k <= rows; ++k) {
        const double x = p[k];
        const double z = q[k];
        p[k] = x * c + z * s;
        q[k] = z * c - x * s;
    }
}

// Reduces rv[l] to rv[k] to zero if w[l - 1] is negligible.
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
        rotate(d.a[l - 1], d.a[i], d.m, c, s);
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
        rotate(d.v[j], d.v[i], d.n, c, s);
        z = pythag(f, h);
        d.w[j] = z;
        if (z != 0.0) {
            c = f / z;
            s = h / z;
        }
        f = c * g + s * y;
        x = c * y - s * g;
        rotate(d.a[j], d.a[i], d.m, c, s);
    }
    d.rv[l] = 0.0;
    d.rv[k] = f;
    d.w[k] = x;
}

// Returns the beginning l of the block that ends at k; rv[l] is then negligible.
int split_block(const Decomposition& d, int k) {
    for (int l = k; l > 1; --l) {
        if (d.negligible(d.rv[l])) return l;
        if (d.negligible(d.w[l - 1])) {
            cancel(d, l, k);
            return l;
        }
    }
    return 1;  // rv[1] is always zero; with NaN, the test above would read w[0]
}

void settle(const Decomposition& d, int k) {
    for (int pass = 0; pass < kMaxPasses; ++pass) {
        const int l = split_block(d, k);
        if (l != k) {
            qr_pass(d, l, k);
            // NaN stays NaN in every further pass, and so does every solution.
            if (std::isnan(d.w[k])) return;
            continue;
        }
        if (d.w[k] < 0.0) {
            d.w[k] = -d.w[k];
            for (int j = 1; j <= d.n; ++j)
                d.v[k][j] = -d.v[k][j];
        }
        return;
    }
}

}  // namespace

void decompose(double** a, int m, int n, double* w, double** v) {
    Vector rv(n);
    Matrix columns(n, m);
    for (int i = 1; i <= m; ++i) {
        for (int j = 1; j <= n; ++j)
            columns[j][i] = a[i][j];
    }
    Decomposition d{columns, m, n, w, v, rv, 0.0};
    reduce_to_bidiagonal(d);
    gather_right_steps(d);
    gather_left_steps(d);
    for (int k = n; k >= 1; --k)
        settle(d, k);
    for (int i = 1; i <= m; ++i) {
        for (int j = 1; j <= n; ++j)
            a[i][j] = columns[j][i];
    }
    for (int i = 1; i <= n; ++i) {
        for (int j = 1; j < i; ++j)
            std::swap(v[i][j], v[j][i]);
    }
}

void back_substitute(double** u, const double* w, double** v, int m, int n, const double* b, double* x) {
    Vector t(n);
    by_fours(1, n, [&](auto width, int j) {
        double sum[decltype(width)::value] = {};
        for (int i = 1; i <= m; ++i) {
            for (int c = 0; c < width; ++c)
                sum[c] += u[i][j + c] * b[i];
        }
        for (int c = 0; c < width; ++c)
            t[j + c] = sum[c];
    });
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
