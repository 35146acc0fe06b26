#include "examples/image.h"

#include <stdexcept>

namespace {

constexpr zellap10::plotter::Argb kWhite = 0xFFFFFFFF;

void check(cairo_status_t status, const std::string& what) {
    if (status != CAIRO_STATUS_SUCCESS)
        throw std::runtime_error(what + ": " + cairo_status_to_string(status));
}

}  // namespace

Image::Image(CZellap& chart, const zellap10::plotter::Viewport& window)
    : window_(window),
      surface_(cairo_image_surface_create(CAIRO_FORMAT_RGB24, window.width, window.height),
               cairo_surface_destroy),
      cairo_(cairo_create(surface_.get()), cairo_destroy) {
    cairo_surface_t* const surface = surface_.get();
    check(cairo_status(cairo_.get()), "no picture to draw on");
    cairo_surface_flush(surface);
    if (!draw_viewport(chart, window, zellap10::plotter::colours_of(chart), kWhite,
                       {cairo_image_surface_get_data(surface), window.width, window.height,
                        cairo_image_surface_get_stride(surface)})) {
        throw std::runtime_error("the chart's lines cannot be read");
    }
    cairo_surface_mark_dirty(surface);
}

void Image::write_png(const std::string& path) const {
    check(cairo_surface_write_to_png(surface_.get(), path.c_str()), "cannot write " + path);
}
