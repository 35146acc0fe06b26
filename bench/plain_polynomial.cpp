#include "plain_polynomial.h"

namespace {

double power(double base, int exponent) {
    double value = 1.0;
    for (int i = 0; i < exponent; ++i)
        value *= base;
    return value;
}

}  // namespace

double plain_term(int index, double a, double b) {
    int degree = 0;
    while (index > degree)
        index -= ++degree;
    return power(a, degree - index) * power(b, index);
}
