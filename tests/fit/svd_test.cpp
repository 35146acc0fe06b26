#include <algorithm>
#include <cmath>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <zellap10/georef/geo_record.h>

namespace {

using Rows = std::vector<std::vector<double>>;

// Rounding of a decomposition, relative to the largest singular value.
constexpr double kTol = 1e-13;

// A matrix from the record's allocator, and its factors.
class Decomposed {
public:
    Decomposed(const Rows& rows, int columns)
        : m(static_cast<int>(rows.size())),
          n(columns),
          u(record.dmatrix(1, m, 1, n)),
          w(record.dvector(1, n)),
          v(record.dmatrix(1, n, 1, n)) {
        for (int i = 1; i <= m; ++i) {
            for (int j = 1; j <= n; ++j)
                u[i][j] = element(rows, i, j);
        }
        record.svdcmp(u, m, n, w, v);
    }
    ~Decomposed() {
        record.free_dmatrix(u, 1, m, 1, n);
        record.free_dvector(w, 1, n);
        record.free_dmatrix(v, 1, n, 1, n);
    }
    Decomposed(const Decomposed&) = delete;
    Decomposed& operator=(const Decomposed&) = delete;

    static double element(const Rows& rows, int i, int j) {
        return rows[static_cast<std::size_t>(i) - 1][static_cast<std::size_t>(j) - 1];
    }
    std::vector<double> values() const { return {w + 1, w + 1 + n}; }

    CGEORec record;
    int m;
    int n;
    double** u;
    double* w;
    double** v;
};

Rows random_rows(int m, int n, int rank) {
    std::mt19937 random(5);
    std::uniform_real_distribution<double> spread(-1.0, 1.0);
    const auto columns = static_cast<std::size_t>(n);
    Rows matrix(static_cast<std::size_t>(m), std::vector<double>(columns, 0.0));
    std::vector<double> right(columns);
    for (int r = 0; r < rank; ++r) {
        for (double& element : right)
            element = spread(random) / rank;
        for (std::vector<double>& row : matrix) {
            const double left = spread(random);
            for (std::size_t j = 0; j < columns; ++j)
                row[j] += left * right[j];
        }
    }
    return matrix;
}

// Terms of a chart's pixels: columns from 1 to 10000 to the degree.
Rows chart_rows(int m, int n) {
    std::mt19937 random(3);
    Rows matrix;
    for (int i = 0; i < m; ++i) {
        const auto x = static_cast<double>(random() % 10000), y = static_cast<double>(random() % 10000);
        matrix.emplace_back();
        for (int j = 0; j < n; ++j)
            matrix.back().push_back(CGEORec().polyfunc(j, x, y));
    }
    return matrix;
}

struct ShapeRow {
    const char* name;
    Rows matrix;
    int n, rank;
};

const ShapeRow kShapeRows[] = {
    {"tall", random_rows(40, 10, 10), 10, 10},
    {"wide", random_rows(4, 10, 4), 10, 4},
    {"one row", random_rows(1, 6, 1), 6, 1},
    {"one column", random_rows(6, 1, 1), 1, 1},
    {"tall, rank deficient", random_rows(40, 10, 3), 10, 3},
    {"wide, rank deficient", random_rows(5, 21, 2), 21, 2},
    {"zero", random_rows(7, 5, 0), 5, 0},
    {"a column of zeros", {{0, 1, 2}, {0, 3, 5}, {0, 4, 9}, {0, 2, 6}}, 3, 2},
    {"no rows", {}, 4, 0},
    {"pixels of a chart, order 5", chart_rows(60, 21), 21, -1},
};

double largest_of(const std::vector<double>& values) {
    return *std::max_element(values.begin(), values.end());
}

// Orthogonal factors that rebuild a matrix are its decomposition.
TEST(Decomposition, RebuildsItsMatrixFromOrthogonalFactors) {
    for (const ShapeRow& row : kShapeRows) {
        SCOPED_TRACE(row.name);
        const Decomposed d(row.matrix, row.n);
        const double tolerance = kTol * std::max(largest_of(d.values()), 1.0);
        for (int i = 1; i <= d.m; ++i) {
            for (int j = 1; j <= d.n; ++j) {
                double element = 0.0;
                for (int k = 1; k <= d.n; ++k)
                    element += d.u[i][k] * d.w[k] * d.v[j][k];
                EXPECT_NEAR(element, Decomposed::element(row.matrix, i, j), tolerance);
            }
        }
        int positive = 0;
        for (int p = 1; p <= d.n; ++p) {
            EXPECT_GE(d.w[p], 0.0);
            positive += d.w[p] > tolerance;
            for (int q = 1; q <= d.n; ++q) {
                double v_product = 0.0;
                double u_product = 0.0;
                for (int k = 1; k <= d.n; ++k)
                    v_product += d.v[k][p] * d.v[k][q];
                for (int k = 1; k <= d.m; ++k)
                    u_product += d.u[k][p] * d.u[k][q];
                EXPECT_NEAR(v_product, p == q, kTol);
                // Columns of U for a value of zero need not be unit vectors.
                const bool both_used = d.w[p] > tolerance && d.w[q] > tolerance;
                EXPECT_NEAR(both_used ? u_product : p == q, p == q, kTol);
            }
        }
        if (row.rank >= 0) {
            EXPECT_EQ(positive, row.rank);
        }
    }
}

TEST(Decomposition, DoesNotSortItsValues) {
    EXPECT_EQ(Decomposed({{3, 0, 0}, {0, 1, 0}, {0, 0, 2}}, 3).values(), (std::vector<double>{3, 1, 2}));
    for (const double size : {1e-159, 1e-200, 1e140, 1e200}) {
        const bool sound = size == 1e-159 || size == 1e140;
        EXPECT_EQ(std::isfinite(Decomposed({{size, 0.5 * size}, {0.75 * size, size}}, 2).w[1]), sound)
            << size;
    }
}

TEST(Pythag, DoesNotOverflow) {
    const CGEORec record;
    EXPECT_EQ(record.pythag(3, 4), 5.0);
    EXPECT_EQ(record.pythag(-5, 0), 5.0);
    EXPECT_NEAR(record.pythag(1e200, 1e200) / 1e200, std::sqrt(2.0), 1e-15);
}

TEST(Matrix, IsContiguousForAllBounds) {
    const CGEORec record;
    double** matrix = record.dmatrix(3, 5, 2, 4);
    for (long i = 3; i <= 5; ++i) {
        for (long j = 2; j <= 4; ++j)
            matrix[i][j] = static_cast<double>(10 * i + j);
    }
    for (long k = 0; k < 9; ++k)
        EXPECT_EQ(matrix[3][2 + k], static_cast<double>(10 * (3 + k / 3) + 2 + k % 3));
    record.free_dmatrix(matrix, 3, 5, 2, 4);
    record.free_dmatrix(record.dmatrix(1, 0, 1, 5), 1, 0, 1, 5);
    double* vector = record.dvector(1, 0);
    vector[0] = 1.0;
    record.free_dvector(vector, 1, 0);
}

}  // namespace
