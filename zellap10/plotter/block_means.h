#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <vector>

#include <zellap10/chart/zellap.h>
#include <zellap10/plotter/colours.h>

namespace zellap10::plotter {

/// Reads the means of blocks of chart pixels in true colour, a row of blocks at a time. A block at the right
/// or lower edge is the mean of the pixels that the chart has.
class BlockMeans {
public:
    /// @param factor      chart pixels along the edge of a block, 1 or more
    /// @param first, end  blocks from the left, on the chart
    BlockMeans(CZellap& chart, const ColourTable& colours, int factor, int first, int end);

    /// Blocks in a row.
    [[nodiscard]] std::size_t size() const { return sums_.size(); }

    /// @param row     of blocks, on the chart
    /// @param pixels  receives a mean per block
    /// @param goes_on called before each piece of a line of at most 2^22 pixels; ends the work if false
    /// @return        false if a line cannot be read, or if the work was ended
    [[nodiscard]] bool read(int row, Argb* pixels, const std::function<bool()>& goes_on);

private:
    // Red, green and blue in lanes of 21 bits, which hold the sum of kLanePixels pixels.
    using Lanes = std::uint64_t;
    using Sum = std::array<std::uint64_t, 3>;

    [[nodiscard]] std::int64_t width_of(std::size_t block) const;
    [[nodiscard]] bool add_line(int line, const std::function<bool()>& goes_on);
    [[nodiscard]] Lanes sum_of(const unsigned char* indexes, std::int64_t count) const;
    void add_blocks(const unsigned char* indexes, std::size_t block, std::int64_t count);
    void flush();

    CZellap& chart_;
    int factor_;
    CSize size_;
    std::int64_t left_;  // chart columns
    std::int64_t columns_;
    std::array<Lanes, 256> lanes_;
    std::vector<unsigned char> indexes_;  // of a piece of a line
    std::vector<Lanes> lines_;            // of each block since the last flush
    std::vector<Sum> sums_;               // of each block
};

}  // namespace zellap10::plotter
