#pragma once

#include <string>
#include <vector>

#include <zellap10/chart/zellap.h>

/// The same chart by the plainest code that gives the same results: a locked getc a byte, one fill a run,
/// every colour against every entry. It is the yardstick of the benchmarks and the check of the library's
/// answers.
class PlainChart : public CZellap {
public:
    int plain_open(const char* path);
    int plain_line(int line, unsigned char* dest);
    int plain_window(int first_line, int line_count, int first_col, int col_count, unsigned char* dest);
    int plain_reduced_line(int first_line, int first_col, int col_count, unsigned char* dest, int x_factor,
                           int y_factor);
    void plain_palette();
    void plain_index();

    // The library's own, in reach for a benchmark of each alone.
    using CZellap::BuildPal;
    using CZellap::BuildPalIndex;

private:
    void plain_seek(int line);
    void plain_run(int* colour, int* length);
};
