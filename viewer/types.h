#pragma once

#include <zellap10/plotter/colours.h>
#include <zellap10/plotter/position.h>
#include <zellap10/plotter/viewport.h>

namespace viewer {

using zellap10::plotter::Argb;
using zellap10::plotter::Bitmap;
using zellap10::plotter::ChartPixel;
using zellap10::plotter::ColourScheme;
using zellap10::plotter::Position;
using zellap10::plotter::ScreenPixel;
using zellap10::plotter::ScreenSize;

}  // namespace viewer
