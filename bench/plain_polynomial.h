#pragma once

/// A term of a polynomial in two variables by its index, each power by repeated multiplication. It stands in
/// a file of its own, so that a loop over the terms calls it as it would call the record's own operation.
double plain_term(int index, double a, double b);
