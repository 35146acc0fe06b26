#pragma once

#include <zellap10/plotter/colours.h>
#include <zellap10/plotter/position.h>
#include <zellap10/plotter/window.h>

namespace viewer {

using zellap10::plotter::Argb;
using zellap10::plotter::Light;
using zellap10::plotter::Picture;
using zellap10::plotter::Pixel;
using zellap10::plotter::Position;

struct Size {
    int width = 0;
    int height = 0;
};

/// A place in the window, in pixels from its upper left; whole numbers are the middles of pixels.
struct Spot {
    double x = 0;
    double y = 0;
};

}  // namespace viewer
