#pragma once

/// A term of a polynomial in two variables by its index, each power by repeated multiplication. It has a
/// file of its own to prevent inlining, like the operation of the record.
double plain_term(int index, double a, double b);
