#include "plain_chart.h"

#include <cstdio>
#include <cstring>
#include <vector>

namespace {

int plain_distance(const PALETTEENTRY& a, int red, int green, int blue) {
    return (a.peRed - red) * (a.peRed - red) + (a.peGreen - green) * (a.peGreen - green) +
           (a.peBlue - blue) * (a.peBlue - blue);
}

}  // namespace

void PlainChart::plain_seek(int line) {
    std::fseek(ChartFile, LineOffsets[line], SEEK_SET);
    while (std::getc(ChartFile) >= 0x80) {
    }
}

void PlainChart::plain_run(int* colour, int* length) {
    int byte = std::getc(ChartFile);
    *colour = (byte & ColourMask) >> ColourShift;
    int value = byte & RunMask;
    while (byte >= 0x80) {
        byte = std::getc(ChartFile);
        value = value * 128 + (byte & 0x7F);
    }
    *length = value + 1;
}

int PlainChart::plain_window(int first_line, int line_count, int first_col, int col_count,
                             unsigned char* dest) {
    for (int line = first_line; line < first_line + line_count; ++line) {
        plain_seek(line);
        int colour;
        int length;
        plain_run(&colour, &length);
        int end = length;
        while (end < first_col) {
            plain_run(&colour, &length);
            end += length;
        }
        int count = end - first_col < col_count ? end - first_col : col_count;
        for (int left = col_count; left > 0;) {
            std::memset(dest, colour, static_cast<std::size_t>(count));
            dest += count;
            left -= count;
            if (left == 0) break;
            plain_run(&colour, &length);
            count = length < left ? length : left;
        }
    }
    return 1;
}

int PlainChart::plain_reduced_line(int first_line, int first_col, int col_count, unsigned char* dest,
                                   int x_factor, int y_factor) {
    std::vector<unsigned char> pixels(static_cast<std::size_t>(col_count) *
                                      static_cast<std::size_t>(y_factor));
    plain_window(first_line, y_factor, first_col, col_count, pixels.data());
    for (int o = 0; o < col_count / x_factor; ++o)
        dest[o] = plain_mean(pixels.data(), col_count, o * x_factor, x_factor, y_factor);
    return 1;
}

unsigned char PlainChart::plain_mean(const unsigned char* pixels, int col_count, int first_col, int x_factor,
                                     int y_factor) const {
    int red = 0;
    int green = 0;
    int blue = 0;
    for (int c = first_col; c < first_col + x_factor; ++c) {
        for (int y = 0; y < y_factor; ++y) {
            const PALETTEENTRY& colour =
                LogPalette.palPalEntry[pixels[static_cast<std::ptrdiff_t>(y) * col_count + c]];
            red += colour.peRed;
            green += colour.peGreen;
            blue += colour.peBlue;
        }
    }
    const int divisor = x_factor * y_factor * 8;
    return ColourIndex[(red / divisor * 32 + green / divisor) * 32 + blue / divisor];
}

void PlainChart::plain_palette() {
    PALETTEENTRY* entries = LogPalette.palPalEntry;
    for (int i = 0; i < HeaderColourCount; ++i)
        entries[i] = HeaderColours[i];
    int used = HeaderColourCount;
    int threshold = 195075;
    while (used < 256 && threshold > 768) {
        threshold /= 2;
        const int count = used;
        for (int i = 1; i < count && used < 256; ++i) {
            for (int j = i + 1; j < count && used < 256; ++j) {
                const int red = (entries[i].peRed + entries[j].peRed) / 2 & 0xF8;
                const int green = (entries[i].peGreen + entries[j].peGreen) / 2 & 0xF8;
                const int blue = (entries[i].peBlue + entries[j].peBlue) / 2 & 0xF8;
                int smallest = 0x7FFFFFFF;
                for (int k = 1; k < used; ++k) {
                    const int d = plain_distance(entries[k], red, green, blue);
                    if (d < smallest) smallest = d;
                }
                if (smallest > threshold) {
                    entries[used++] = {static_cast<unsigned char>(red), static_cast<unsigned char>(green),
                                       static_cast<unsigned char>(blue), 0};
                }
            }
        }
    }
    LogPalette.palNumEntries = static_cast<unsigned short>(used);
}

unsigned char PlainChart::plain_nearest(int red, int green, int blue) const {
    int best = 0;
    int best_distance = 0x7FFFFFFF;
    for (int k = 1; k < LogPalette.palNumEntries; ++k) {
        const int d = plain_distance(LogPalette.palPalEntry[k], red, green, blue);
        if (d < best_distance) {
            best_distance = d;
            best = k;
        }
    }
    return static_cast<unsigned char>(best);
}

void PlainChart::plain_index() {
    for (int cell = 0; cell < 32 * 32 * 32; ++cell)
        ColourIndex[cell] = plain_nearest((cell >> 10) * 8, (cell >> 5 & 31) * 8, (cell & 31) * 8);
}
