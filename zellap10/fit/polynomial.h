#pragma once

namespace zellap10::fit {

/// Terms of a polynomial of degree 5 in two variables.
constexpr int kTerms = 21;

/// The first terms at one place. Each power is made once, by repeated multiplication, and each term is the
/// product of two powers:
///
///     0 1   1 a   2 b   3 a2   4 a b   5 b2   6 a3   7 a2 b   8 a b2   9 b3   10 a4   11 a3 b   12 a2 b2
///     13 a b3   14 b4   15 a5   16 a4 b   17 a3 b2   18 a2 b3   19 a b4   20 b5
///
/// @param count  1, 3, 6, 10, 15 or 21: all terms up to a degree
inline void fill_terms(double a, double b, int count, double* terms) {
    terms[0] = 1.0;
    if (count <= 1) return;
    terms[1] = a;
    terms[2] = b;
    if (count <= 3) return;
    const double a2 = a * a;
    const double b2 = b * b;
    terms[3] = a2;
    terms[4] = a * b;
    terms[5] = b2;
    if (count <= 6) return;
    const double a3 = a2 * a;
    const double b3 = b2 * b;
    terms[6] = a3;
    terms[7] = a2 * b;
    terms[8] = a * b2;
    terms[9] = b3;
    if (count <= 10) return;
    const double a4 = a3 * a;
    const double b4 = b3 * b;
    terms[10] = a4;
    terms[11] = a3 * b;
    terms[12] = a2 * b2;
    terms[13] = a * b3;
    terms[14] = b4;
    if (count <= 15) return;
    terms[15] = a4 * a;
    terms[16] = a4 * b;
    terms[17] = a3 * b2;
    terms[18] = a2 * b3;
    terms[19] = a * b4;
    terms[20] = b4 * b;
}

/// All terms at one place.
struct Terms {
    double value[kTerms];

    Terms(double a, double b) { fill_terms(a, b, kTerms, value); }
};

/// The sum of the coefficients times their terms, added from 0 to 20.
inline double sum_of(const double* coefficients, const Terms& terms) {
    double sum = 0.0;
    for (int i = 0; i < kTerms; ++i)
        sum += coefficients[i] * terms.value[i];
    return sum;
}

}  // namespace zellap10::fit
