#pragma once

#include <zellap10/chart/zellap.h>

/// A chart object that also decodes its file by the simplest code with the same results: one locked getc per
/// byte, one fill per run, every colour against every palette entry. Benchmarks measure against it, and tests
/// check the library against it. The protected operations of the library are public here.
class PlainChart : public CZellap {
public:
    int plain_window(int first_line, int line_count, int first_col, int col_count, unsigned char* dest);
    int plain_reduced_line(int first_line, int first_col, int col_count, unsigned char* dest, int x_factor,
                           int y_factor);
    /// The reduced pixel of a block of `x_factor` by `y_factor` pixels, in lines of `col_count` pixels.
    unsigned char plain_mean(const unsigned char* pixels, int col_count, int first_col, int x_factor,
                             int y_factor) const;
    void plain_palette();
    /// The palette entry nearest to a colour.
    unsigned char plain_nearest(int red, int green, int blue) const;
    void plain_index();

    using CZellap::BuildPal;
    using CZellap::BuildPalIndex;
    using CZellap::ReadHeader;
    using CZellap::seekLine;
    using CZellap::vNextCRL;

protected:
    void plain_seek(int line);
    void plain_run(int* colour, int* length);
};
