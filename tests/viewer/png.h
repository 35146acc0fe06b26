#pragma once

#include <cairo.h>

#include <cstring>
#include <string>
#include <vector>

#include <viewer/types.h>

struct Png {
    int width = 0;  ///< 0 for a file that cannot be read
    int height = 0;
    std::vector<viewer::Argb> pixels;
};

inline Png read_png(const std::string& path) {
    Png png;
    cairo_surface_t* surface = cairo_image_surface_create_from_png(path.c_str());
    png.width = cairo_image_surface_get_width(surface);
    png.height = cairo_image_surface_get_height(surface);
    const auto bytes = static_cast<std::size_t>(png.width) * sizeof(viewer::Argb);
    png.pixels.resize(static_cast<std::size_t>(png.width) * static_cast<std::size_t>(png.height));
    for (int y = 0; y < png.height; ++y) {
        std::memcpy(png.pixels.data() + static_cast<std::ptrdiff_t>(y) * png.width,
                    cairo_image_surface_get_data(surface) + y * cairo_image_surface_get_stride(surface),
                    bytes);
    }
    cairo_surface_destroy(surface);
    return png;
}
