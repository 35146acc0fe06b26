#pragma once

/// @file
///
/// The colours of a chart's pixels on the screen.

#include <array>
#include <cstdint>

#include <zellap10/chart/zellap.h>

namespace zellap10::plotter {

/// A colour of the screen: 0xAARRGGBB in the byte order of the machine, the usual format of 32-bit bitmaps.
using Argb = std::uint32_t;

/// The colour of each colour index, all of them opaque.
using ColourTable = std::array<Argb, 256>;

/// The ambient light for which colours are chosen.
enum class ColourScheme {
    kDay,    ///< the colours of the chart
    kDusk,   ///< half as bright
    kNight,  ///< dim, blue most of all, so that eyes stay adapted to the dark
};

/// Dims a colour for a colour scheme: each part times a constant, rounded. Alpha does not change. Use it also
/// for what is drawn beside and over a chart.
[[nodiscard]] Argb colour_in(ColourScheme scheme, Argb colour);

/// The colours of a chart.
///
/// Indexes past the end of the palette are black. Without a palette, all are: if the chart is not open, or
/// open for information only. Charts use the indexes from 1 on; index 0 is black unless the header defines
/// it.
[[nodiscard]] ColourTable colours_of(const CZellap& chart, ColourScheme scheme = ColourScheme::kDay);

}  // namespace zellap10::plotter
