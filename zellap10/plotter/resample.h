#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>

#include <zellap10/plotter/colours.h>

/// @file
///
/// Means over boxes of a raster: one for each pixel of a piece of a screen row.
///
/// A box is 1 to 2 pixels wide and high, parallel to the raster. A box of 1 by 1 is bilinear interpolation.
/// The box around a turned screen pixel has that pixel's second moments, so that one formula serves every
/// turn.

namespace zellap10::plotter {

/// Pixels that a piece of a row has at the most.
constexpr int kMostResampled = 128;

constexpr int kFractionBits = 16;
constexpr std::int32_t kOnePixel = std::int32_t{1} << kFractionBits;

/// The weights of the raster pixels along a side of a box, by the upper eight bits of the fraction at which
/// the box begins. They add up to 256, and are there eight times, for the channels of two pixels.
class BoxWeights {
public:
    using Lanes = std::uint16_t[8];

    /// @param side  of the box, 1 to 2 pixels times 2^16
    explicit BoxWeights(std::int32_t side);

    [[nodiscard]] bool is_bilinear() const { return is_bilinear_; }

    /// The weights of the three pixels from the one at which the box begins.
    [[nodiscard]] const Lanes* at(std::int32_t edge) const {
        return lanes_[static_cast<std::uint32_t>(edge) >> 8 & 0xFF];
    }

private:
    Lanes lanes_[256][3];
    bool is_bilinear_;
};

/// The weights of boxes whose sides are multiples of 1/256 pixel. Several threads may use it.
class BoxTables {
public:
    /// @param side  in pixels, held within 1 to 2 and rounded
    [[nodiscard]] const BoxWeights& of(double side);

private:
    std::mutex mutex_;
    std::array<std::unique_ptr<const BoxWeights>, 257> tables_;
};

/// Boxes along a straight line of a raster, in pixels times 2^16. The edge of raster pixel i is i.
struct BoxRow {
    std::int32_t left, top;            ///< upper left corner of the first box, 0 or more
    std::int32_t left_step, top_step;  ///< from a box to the next
    int count;                         ///< 1 to kMostResampled
};

/// @param raster  the 3 by 3 pixels from that at which a box begins must be inside, and one more pixel must
///                follow them in memory
/// @param stride  pixels from a row of the raster to the next
/// @param across  by the width of the boxes
/// @param down    by their height
/// @param dest    receives `count` pixels
void resample(const Argb* raster, std::ptrdiff_t stride, const BoxRow& boxes, const BoxWeights& across,
              const BoxWeights& down, Argb* dest);

}  // namespace zellap10::plotter
