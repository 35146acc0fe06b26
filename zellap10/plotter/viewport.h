#pragma once

/// @file
///
/// Drawing a part of a chart into a bitmap, at full scale or reduced.

#include <cstddef>

#include <zellap10/chart/zellap.h>
#include <zellap10/plotter/colours.h>
#include <zellap10/plotter/position.h>

namespace zellap10::plotter {

/// A bitmap in the caller's memory. Its pixels are 32-bit Argb values. It can be a surface of cairo (RGB24 or
/// ARGB32), a texture of SDL (ARGB8888) or a 32-bit bitmap of Windows.
struct Bitmap {
    void* pixels = nullptr;     ///< the first byte of the top row; needs no alignment
    int width = 0;              ///< pixels per row; below 1 the bitmap is empty
    int height = 0;             ///< rows; below 1 the bitmap is empty
    std::ptrdiff_t stride = 0;  ///< BYTES from a row to the next one below; negative if rows are bottom up
};

/// The part of a chart that a bitmap shows.
///
/// A chart is divided into blocks of `reduction` by `reduction` pixels from its upper left corner, and each
/// block becomes one pixel of the bitmap. Viewports with the same reduction therefore join without a seam.
struct Viewport {
    int column = 0;     ///< first block from the left; negative left of the chart
    int row = 0;        ///< first block from the top; negative above the chart
    int reduction = 1;  ///< chart pixels along the edge of a block, 1 or more
    int width = 0;      ///< blocks from left to right, as many as the bitmap has columns
    int height = 0;     ///< blocks from top to bottom, as many as the bitmap has rows

    /// The chart pixel at a pixel of the viewport.
    [[nodiscard]] ChartPixel to_chart(ScreenPixel pixel) const;

    /// The pixel of the viewport at a chart pixel.
    [[nodiscard]] ScreenPixel to_screen(ChartPixel pixel) const;
};

/// How the colour of a block is calculated.
enum class Averaging {
    kPalette,     ///< the palette colour nearest to the mean, as getAALine finds it; up to 32 of 255 off
    kTrueColour,  ///< the mean of the colours of its pixels
};

/// Draws a viewport.
///
/// At reduction 1 the pixels are those of the chart. At higher reductions each is the mean of its block. A
/// block at the right or lower edge of the chart may be incomplete. It becomes the mean of the pixels that it
/// has, so that no line or column is lost.
///
/// Lines are decoded from their start, so the right end of a wide chart takes longer than the left. If the
/// viewport contains an incomplete block at the right edge, its lines are decoded twice.
///
/// @param chart       an open chart
/// @param viewport    any part, also outside the chart
/// @param colours     the chart's colours, from colours_of
/// @param background  the colour outside the chart
/// @param bitmap      receives the pixels; bytes between its rows are not changed. Its size is that of the
///                    viewport
/// @param averaging   of blocks
/// @return            false if the chart is not open, if a line cannot be read (its pixels are then
///                    background), if memory for the blocks runs out, if the reduction is below 1, or if the
///                    sizes differ (then nothing is drawn)
bool draw_viewport(CZellap& chart, const Viewport& viewport, const ColourTable& colours, Argb background,
                   const Bitmap& bitmap, Averaging averaging = Averaging::kPalette);

/// Reads the colour indexes of a viewport, with the blocks of draw_viewport.
///
/// @param chart       an open chart
/// @param viewport    any part, also outside the chart
/// @param background  the index outside the chart
/// @param indexes     receives width times height bytes, row by row
/// @return            as draw_viewport
bool read_viewport(CZellap& chart, const Viewport& viewport, unsigned char background,
                   unsigned char* indexes);

}  // namespace zellap10::plotter
