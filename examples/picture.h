#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// A red, green and blue picture that can be written as a PNG file.

struct Rgb {
    unsigned char red = 0;
    unsigned char green = 0;
    unsigned char blue = 0;
};

static_assert(sizeof(Rgb) == 3, "the rows go to libpng as they are");

struct Picture {
    Picture(int columns, int rows)
        : width(columns),
          height(rows),
          pixels(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows)) {}

    Rgb* row(int y) { return pixels.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width); }

    int width;
    int height;
    std::vector<Rgb> pixels;  ///< row after row
};

/// Throws std::runtime_error, with the path and libpng's reason, where the file cannot be written.
void write_png(const Picture& picture, const std::string& path);
