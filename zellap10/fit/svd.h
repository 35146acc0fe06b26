#pragma once

namespace zellap10::fit {

/// See CGEORec::svdcmp, svbksb and pythag.
void decompose(double** a, int m, int n, double* w, double** v);
void back_substitute(double** u, const double* w, double** v, int m, int n, const double* b, double* x);
double pythag(double a, double b);

}  // namespace zellap10::fit
