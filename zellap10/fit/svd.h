#pragma once

namespace zellap10::fit {

/// Singular value decomposition, A = U diag(w) V^T. Vectors and matrices count from 1.
///
/// @param a  m by n; A on entry, U on return
/// @param m  rows, 0 or more
/// @param n  columns, 1 or more
/// @param w  n; receives the singular values, not negative and not sorted
/// @param v  n by n; receives V
void decompose(double** a, int m, int n, double* w, double** v);

/// Solves for one right-hand side b of m elements; directions with a w of exactly 0 take no part.
void back_substitute(double** u, const double* w, double** v, int m, int n, const double* b, double* x);

/// The square root of a2 + b2 without overflow of the squares.
double pythag(double a, double b);

}  // namespace zellap10::fit
