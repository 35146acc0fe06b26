#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "test_matrix.h"

namespace {

using Rows = std::vector<std::vector<double>>;

// Rounding of a decomposition grows with the matrix's own size; its largest element is 1 in these tests.
constexpr double kTol = 1e-13;

Rows random_rows(int m, int n, int rank, unsigned seed) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> spread(-1.0, 1.0);
    const auto rows = static_cast<std::size_t>(m);
    const auto columns = static_cast<std::size_t>(n);
    Rows matrix(rows, std::vector<double>(columns, 0.0));
    for (int r = 0; r < rank; ++r) {
        std::vector<double> left(rows);
        std::vector<double> right(columns);
        for (double& element : left)
            element = spread(random);
        for (double& element : right)
            element = spread(random) / rank;
        for (std::size_t i = 0; i < rows; ++i) {
            for (std::size_t j = 0; j < columns; ++j)
                matrix[i][j] += left[i] * right[j];
        }
    }
    return matrix;
}

struct ShapeRow {
    const char* name;
    int m, n, rank;
};

// clang-format off
const ShapeRow kShapeRows[] = {
    // name                      m   n   rank
    {"tall",                     40, 10, 10},
    {"square",                   10, 10, 10},
    {"wide",                     4,  10, 4},
    {"one row",                  1,  6,  1},
    {"one column",               6,  1,  1},
    {"one element",              1,  1,  1},
    {"tall, rank deficient",     40, 10, 3},
    {"wide, rank deficient",     5,  21, 2},
    {"identical directions",     8,  8,  1},
    {"zero",                     7,  5,  0},
    {"no rows",                  0,  4,  0},
    {"sixty points, order 5",    60, 21, 21},
};
// clang-format on

TEST(Decomposition, RebuildsItsMatrix) {
    for (const ShapeRow& row : kShapeRows) {
        SCOPED_TRACE(row.name);
        const Rows matrix = random_rows(row.m, row.n, row.rank, 5);
        const Decomposed d(matrix, row.n);
        for (int i = 1; i <= d.m; ++i) {
            for (int j = 1; j <= d.n; ++j) {
                double element = 0.0;
                for (int k = 1; k <= d.n; ++k)
                    element += d.u[i][k] * d.w[k] * d.v[j][k];
                EXPECT_NEAR(element, matrix[static_cast<std::size_t>(i) - 1][static_cast<std::size_t>(j) - 1],
                            kTol);
            }
        }
        int positive = 0;
        for (const double value : d.values()) {
            EXPECT_GE(value, 0.0);
            positive += value > kTol;
        }
        EXPECT_EQ(positive, row.rank);
    }
}

TEST(Decomposition, HasOrthogonalFactors) {
    for (const ShapeRow& row : kShapeRows) {
        SCOPED_TRACE(row.name);
        const Decomposed d(random_rows(row.m, row.n, row.rank, 6), row.n);
        for (int p = 1; p <= d.n; ++p) {
            for (int q = 1; q <= d.n; ++q) {
                double v_product = 0.0;
                double u_product = 0.0;
                for (int k = 1; k <= d.n; ++k)
                    v_product += d.v[k][p] * d.v[k][q];
                for (int k = 1; k <= d.m; ++k)
                    u_product += d.u[k][p] * d.u[k][q];
                EXPECT_NEAR(v_product, p == q, kTol);
                // Columns of U that belong to a value of zero need not be unit vectors.
                const bool both_used = d.w[p] > kTol && d.w[q] > kTol;
                EXPECT_NEAR(both_used ? u_product : p == q, p == q, kTol);
            }
        }
    }
}

TEST(Decomposition, LeavesItsValuesUnsorted) {
    EXPECT_EQ(Decomposed({{3, 0, 0}, {0, 1, 0}, {0, 0, 2}}, 3).values(), (std::vector<double>{3, 1, 2}));
    EXPECT_EQ(Decomposed({{-3, 0}, {0, -4}}, 2).values(), (std::vector<double>{3, 4}));
    EXPECT_EQ(Decomposed(Rows(4, std::vector<double>(3, 0.0)), 3).values(), (std::vector<double>{0, 0, 0}));
    const Decomposed no_rows({}, 2);
    EXPECT_EQ(no_rows.values(), (std::vector<double>{0, 0}));
    EXPECT_EQ(no_rows.v[1][1], 1.0);
    EXPECT_EQ(no_rows.v[1][2], 0.0);
}

std::vector<double> solved(Decomposed& d, std::vector<double> b) {
    std::vector<double> x(static_cast<std::size_t>(d.n) + 1, 7.0);
    b.insert(b.begin(), 0.0);
    d.record.svbksb(d.u, d.w, d.v, d.m, d.n, b.data(), x.data());
    EXPECT_EQ(x[0], 7.0) << "element 0 is never touched";
    return {x.begin() + 1, x.end()};
}

TEST(BackSubstitution, Solves) {
    Decomposed d({{2, 0, 1}, {0, 4, 0}, {1, 0, 3}}, 3);
    const std::vector<double> x = solved(d, {5, 8, 10});  // 2x+z, 4y, x+3z at (1, 2, 3)
    for (int i = 0; i < 3; ++i)
        EXPECT_NEAR(x[static_cast<std::size_t>(i)], i + 1, kTol);
    for (int j = 1; j <= 3; ++j)
        d.w[j] = 0.0;
    EXPECT_EQ(solved(d, {5, 8, 10}), (std::vector<double>{0, 0, 0}));
}

TEST(BackSubstitution, GivesTheSmallestSolutionOfOneRow) {
    for (const std::size_t copies : {1u, 4u}) {
        Decomposed d(Rows(copies, {1, 2, 2}), 3);
        double largest = 0.0;
        for (int j = 1; j <= 3; ++j)
            largest = std::max(largest, d.w[j]);
        EXPECT_NEAR(largest, 3 * std::sqrt(static_cast<double>(copies)), kTol);
        for (int j = 1; j <= 3; ++j)
            d.w[j] = d.w[j] < 1e-10 * largest ? 0.0 : d.w[j];
        const std::vector<double> x = solved(d, std::vector<double>(copies, 9.0));
        const double expected[] = {1, 2, 2};
        for (std::size_t i = 0; i < 3; ++i)
            EXPECT_NEAR(x[i], expected[i], kTol);
    }
}

TEST(Pythag, DoesNotOverflow) {
    const CGEORec record;
    EXPECT_EQ(record.pythag(3, 4), 5.0);
    EXPECT_EQ(record.pythag(0, 0), 0.0);
    EXPECT_EQ(record.pythag(0, 5), 5.0);
    EXPECT_EQ(record.pythag(-5, 0), 5.0);
    EXPECT_NEAR(record.pythag(1e200, 1e200) / 1e200, std::sqrt(2.0), 1e-15);
}

TEST(Matrix, StandsInOnePieceForAnyBounds) {
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
