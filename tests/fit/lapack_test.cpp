#include <gtest/gtest.h>
#include <lapacke.h>

#include <algorithm>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "test_matrix.h"

namespace {

using Rows = std::vector<std::vector<double>>;

// Two sound decompositions differ by rounding, which grows with the largest value.
constexpr double kTolOfLargest = 1e-14;

std::vector<double> values_of_lapack(const Rows& matrix, int n) {
    std::vector<double> elements;
    for (const std::vector<double>& row : matrix)
        elements.insert(elements.end(), row.begin(), row.end());
    const int m = static_cast<int>(matrix.size());
    std::vector<double> values(static_cast<std::size_t>(std::min(m, n)));
    std::vector<double> rest(values.size());
    EXPECT_EQ(LAPACKE_dgesvd(LAPACK_ROW_MAJOR, 'N', 'N', m, n, elements.data(), n, values.data(), nullptr, 1,
                             nullptr, 1, rest.data()),
              0);
    values.resize(static_cast<std::size_t>(n), 0.0);
    return values;
}

// Terms of a chart's pixels: columns from 1 to 10000 to the power of the degree.
Rows chart_rows(int m, int n) {
    const CGEORec record;
    std::mt19937 random(3);
    std::uniform_int_distribution<int> pixel(0, 10000);
    Rows matrix;
    for (int i = 0; i < m; ++i) {
        const double x = pixel(random);
        const double y = pixel(random);
        std::vector<double> row;
        for (int j = 0; j < n; ++j)
            row.push_back(record.polyfunc(j, x, y));
        matrix.push_back(row);
    }
    return matrix;
}

TEST(Decomposition, AgreesWithLapack) {
    for (const int m : {1, 2, 5, 10, 21, 60, 500}) {
        for (const int n : {1, 3, 6, 10, 21}) {
            SCOPED_TRACE(std::to_string(m) + " by " + std::to_string(n));
            const Rows matrix = chart_rows(m, n);
            std::vector<double> values = Decomposed(matrix, n).values();
            std::sort(values.begin(), values.end(), std::greater<>());
            const std::vector<double> expected = values_of_lapack(matrix, n);
            for (std::size_t i = 0; i < values.size(); ++i) {
                EXPECT_NEAR(values[i], expected[i], kTolOfLargest * expected[0]);
            }
        }
    }
}

}  // namespace
