#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include <zellap10/plotter/colours.h>

/// @file
///
/// PNG files of map tiles.

struct libdeflate_compressor;

namespace zellap10::python {

/// Writes PNG files of one size. An object is for one thread at a time.
///
/// Up to 256 colours become a palette, with 1, 2, 4 or 8 bits per pixel; more become RGB, or RGBA if a pixel
/// is not opaque.
class PngEncoder {
public:
    /// @param level  of libdeflate, 0 to 12; a larger one is slower and makes smaller files
    PngEncoder(int width, int height, int level);

    /// @param pixels  the upper left pixel
    /// @param stride  pixels from a row to the next
    /// @return        the file; empty if every pixel is 0, which is transparent
    std::string encode(const plotter::Argb* pixels, std::size_t stride);

private:
    bool find_palette(const plotter::Argb* pixels, std::size_t stride);
    void pack_indexes(int bits);
    void pack_colours(const plotter::Argb* pixels, std::size_t stride, bool alpha);
    std::string file(int bits, int colour_type);

    std::size_t width_;
    std::size_t height_;
    std::unique_ptr<libdeflate_compressor, void (*)(libdeflate_compressor*)> compressor_;
    std::vector<plotter::Argb> palette_;
    std::vector<unsigned char> indexes_;     // a byte per pixel, where there is a palette
    std::vector<unsigned char> rows_;        // as they are compressed: a filter byte before each
    std::vector<unsigned char> compressed_;  // room for the worst case
    bool opaque_ = false;
};

}  // namespace zellap10::python
