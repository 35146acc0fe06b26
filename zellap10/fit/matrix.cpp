#include "zellap10/fit/matrix.h"

#include <cstddef>
#include <memory>

// A vector is one block with a spare element before its first index. A matrix is a block of row pointers and
// a block of elements, row after row, each with a spare before it. The spare row pointer keeps the elements'
// block, also for a matrix without rows.

namespace zellap10::fit {

namespace {

// Indices from lower to upper; none if upper is below lower.
std::size_t count_of(long lower, long upper) {
    return upper < lower ? 0 : static_cast<std::size_t>(upper) - static_cast<std::size_t>(lower) + 1;
}

}  // namespace

double* new_vector(long lower, long upper) {
    double* elements = new double[count_of(lower, upper) + 1];
    return elements + 1 - lower;
}

double** new_matrix(long first_row, long last_row, long first_column, long last_column) {
    const std::size_t row_count = count_of(first_row, last_row);
    const std::size_t column_count = count_of(first_column, last_column);
    std::unique_ptr<double*[]> rows(new double*[row_count + 1]);
    double* elements = new double[row_count * column_count + 1];
    rows[0] = elements;
    for (std::size_t i = 0; i < row_count; ++i)
        rows[i + 1] = elements + 1 + i * column_count - first_column;
    return rows.release() + 1 - first_row;
}

void delete_vector(double* vector, long lower) {
    delete[](vector + lower - 1);
}

void delete_matrix(double** matrix, long first_row) {
    double** rows = matrix + first_row - 1;
    delete[] rows[0];
    delete[] rows;
}

}  // namespace zellap10::fit
