#pragma once

#include <utility>

namespace zellap10::fit {

/// Vectors and matrices with any first index, not initialised. A matrix may have no rows.
double* new_vector(long lower, long upper);
double** new_matrix(long first_row, long last_row, long first_column, long last_column);
void delete_vector(double* vector, long lower);
void delete_matrix(double** matrix, long first_row);

/// A vector with the indices from 1 to its size.
class Vector {
public:
    explicit Vector(int size) : elements_(new_vector(1, size)) {}
    ~Vector() { delete_vector(elements_, 1); }
    Vector(const Vector&) = delete;
    Vector& operator=(const Vector&) = delete;
    operator double*() { return elements_; }

private:
    double* elements_;
};

/// A matrix whose rows and columns count from 1.
class Matrix {
public:
    Matrix(int rows, int columns) : rows_(new_matrix(1, rows, 1, columns)) {}
    ~Matrix() { delete_matrix(rows_, 1); }
    Matrix(const Matrix&) = delete;
    Matrix& operator=(const Matrix&) = delete;
    operator double**() { return rows_; }

private:
    double** rows_;
};

}  // namespace zellap10::fit
