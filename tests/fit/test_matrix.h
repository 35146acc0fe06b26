#pragma once

#include <vector>

#include <zellap10/georef/geo_record.h>

/// A matrix from the record's allocator, and its factors.
class Decomposed {
public:
    explicit Decomposed(const std::vector<std::vector<double>>& rows, int columns)
        : m(static_cast<int>(rows.size())),
          n(columns),
          u(record.dmatrix(1, m, 1, n)),
          w(record.dvector(1, n)),
          v(record.dmatrix(1, n, 1, n)) {
        for (int i = 1; i <= m; ++i) {
            for (int j = 1; j <= n; ++j) {
                u[i][j] = rows[static_cast<std::size_t>(i) - 1][static_cast<std::size_t>(j) - 1];
            }
        }
        record.svdcmp(u, m, n, w, v);
    }
    ~Decomposed() {
        record.free_dmatrix(u, 1, m, 1, n);
        record.free_dvector(w, 1, n);
        record.free_dmatrix(v, 1, n, 1, n);
    }
    Decomposed(const Decomposed&) = delete;
    Decomposed& operator=(const Decomposed&) = delete;

    std::vector<double> values() const { return {w + 1, w + 1 + n}; }

    CGEORec record;
    int m;
    int n;
    double** u;
    double* w;
    double** v;
};
