#pragma once

#include <array>
#include <cstdint>

#include <zellap10/chart/zellap.h>

/// @file
///
/// The colours that a chart's pixels have on a screen.

namespace zellap10::plotter {

/// A colour of a screen: 0xAARRGGBB in the machine's own byte order, as 32-bit pictures commonly hold it.
using Argb = std::uint32_t;

/// The colour of each byte that a line of a chart may hold, all of them opaque.
using ColourTable = std::array<Argb, 256>;

/// How light it is about the screen.
enum class Light {
    kDay,    ///< colours as the chart has them
    kDusk,   ///< half as bright
    kNight,  ///< dim, and the blue part dimmest, so that eyes stay used to the dark
};

/// A colour as it is shown in a light: each part times a constant of the light, rounded. Alpha stays. It
/// serves for what is drawn beside and over a chart too.
Argb in_light(Argb colour, Light light);

/// The colours of an open chart.
///
/// An index behind the end of the palette is black, and so are all where there is no palette: the chart is
/// not open, or for information only. Charts use the indexes from 1 on; index 0 is black unless the chart's
/// header names it.
///
/// @param chart  an open chart
/// @param light  the light that the table is for
ColourTable colours_of(const CZellap& chart, Light light = Light::kDay);

}  // namespace zellap10::plotter
