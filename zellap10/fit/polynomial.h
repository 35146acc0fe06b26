#pragma once

namespace zellap10::fit {

/// Terms of a polynomial of degree 5 in two variables.
constexpr int kTerms = 21;

/// Calls `use` with all terms at one place and returns its result. Each power is computed once, by repeated
/// multiplication, and each term is the product of two powers. The terms are arguments and not an array,
/// because terms that are stored one by one and loaded in pairs stall the processor.
template <class Use>
inline auto with_terms(double a, double b, Use use) {
    const double a2 = a * a;
    const double b2 = b * b;
    const double a3 = a2 * a;
    const double b3 = b2 * b;
    const double a4 = a3 * a;
    const double b4 = b3 * b;
    // clang-format off
    return use(1.0,
               a, b,
               a2, a * b, b2,
               a3, a2 * b, a * b2, b3,
               a4, a3 * b, a2 * b2, a * b3, b4,
               a4 * a, a4 * b, a3 * b2, a2 * b3, a * b4, b4 * b);
    // clang-format on
}

}  // namespace zellap10::fit
