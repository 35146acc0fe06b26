#pragma once

#include <memory>
#include <string>

#include <cairo.h>

#include <zellap10/plotter/viewport.h>
#include <zellap10/zellap10.h>

/// A picture of a part of a chart, to draw on with cairo. What fails throws std::runtime_error.
class Image {
public:
    /// The part of an open chart by day, white outside the chart.
    Image(CZellap& chart, const zellap10::plotter::Viewport& window);

    cairo_t* cairo() { return cairo_.get(); }
    const zellap10::plotter::Viewport& window() const { return window_; }
    int width() const { return window_.width; }
    int height() const { return window_.height; }

    void write_png(const std::string& path) const;

private:
    zellap10::plotter::Viewport window_;
    std::unique_ptr<cairo_surface_t, void (*)(cairo_surface_t*)> surface_;
    std::unique_ptr<cairo_t, void (*)(cairo_t*)> cairo_;
};
