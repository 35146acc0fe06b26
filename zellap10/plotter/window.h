#pragma once

#include <cstddef>

#include <zellap10/chart/zellap.h>
#include <zellap10/plotter/colours.h>
#include <zellap10/plotter/position.h>

/// @file
///
/// A window on a chart: a part of it, at full scale or reduced, in a picture of the caller's.

namespace zellap10::plotter {

/// A picture in the caller's memory, of 32-bit pixels that are Argb each. It serves as a surface of cairo's
/// (RGB24 or ARGB32), a texture of SDL's (ARGB8888) or a bitmap of Windows' (32 bits).
struct Picture {
    void* pixels = nullptr;     ///< the first byte of the top row; no alignment is asked for
    int width = 0;              ///< pixels in a row; less than 1 is an empty picture
    int height = 0;             ///< rows; less than 1 is an empty picture
    std::ptrdiff_t stride = 0;  ///< BYTES from a row to the one below it; negative where rows stand bottom up
};

/// Which part of a chart a picture shows.
///
/// A chart is cut into blocks of `reduction` by `reduction` pixels from its upper left corner on, and each
/// block is a pixel of the picture. Windows of one reduction thus fit together without a seam, wherever they
/// begin.
struct Window {
    int column = 0;     ///< block that the picture's leftmost pixels show; negative left of the chart
    int row = 0;        ///< block that the picture's top pixels show; negative above the chart
    int reduction = 1;  ///< chart pixels along the edge of a block, 1 or more

    /// The place on the chart of a place on the picture. Whole numbers are the middles of pixels on both.
    Pixel on_chart(Pixel on_picture) const;

    /// The place on the picture of a place on the chart.
    Pixel on_picture(Pixel on_chart) const;
};

/// Fills a whole picture with a part of a chart.
///
/// At reduction 1 the pixels are the chart's own. Above it each is the palette's nearest to the mean colour
/// of its block, as getAALine gives it; a block at the chart's right or lower edge that the chart fills only
/// in part is the mean of the pixels that it has, so that no line or column of the chart is lost.
///
/// A line is decoded from its start: the right end of a wide chart costs more than the left, and a picture
/// that holds a partial block of the right edge decodes its lines twice.
///
/// @param chart       an open chart
/// @param window      the part, anywhere
/// @param colours     the chart's colours, by colours_of
/// @param background  the colour outside the chart
/// @param picture     receives the pixels, and nothing between its rows
/// @return            true, or false where a line of the chart could not be read, which is then in the colour
///                    of the background: the chart is not open, memory for the blocks ran out, or the
///                    reduction is below 1
bool draw_window(CZellap& chart, const Window& window, const ColourTable& colours, Argb background,
                 const Picture& picture);

}  // namespace zellap10::plotter
