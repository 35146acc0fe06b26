#include <algorithm>
#include <cstring>

#include <zellap10/plotter/block_means.h>

namespace zellap10::plotter {

namespace {

constexpr int kLaneBits = 21;
constexpr std::uint64_t kLaneMask = (std::uint64_t{1} << kLaneBits) - 1;
constexpr int kLanePixels = 8192;
static_assert(std::uint64_t{kLanePixels} * 255 <= kLaneMask, "a lane holds the sum of its pixels");

// A piece of a line, which bounds the memory that a wide chart takes. It is decoded from the start of the
// line.
constexpr std::int64_t kMostColumns = 1 << 22;

std::uint64_t lanes_of(Argb colour) {
    return std::uint64_t{colour >> 16 & 0xFF} << 2 * kLaneBits |
           std::uint64_t{colour >> 8 & 0xFF} << kLaneBits | std::uint64_t{colour & 0xFF};
}

void add(std::array<std::uint64_t, 3>& sum, std::uint64_t lanes) {
    for (std::size_t i = 0; i < 3; ++i)
        sum[i] += lanes >> i * kLaneBits & kLaneMask;
}

Argb mean(const std::array<std::uint64_t, 3>& sum, std::uint64_t count) {
    Argb colour = 0xFF000000;
    for (std::size_t i = 0; i < 3; ++i)
        colour |= static_cast<Argb>((sum[i] + count / 2) / count) << 8 * i;
    return colour;
}

// By a power of two.
Argb mean_of_lanes(std::uint64_t lanes, std::int64_t count) {
    int shift = 0;
    while (std::int64_t{1} << shift < count)
        ++shift;
    const auto half = static_cast<std::uint64_t>(count / 2);
    lanes =
        (lanes + half * (1 + (std::uint64_t{1} << kLaneBits) + (std::uint64_t{1} << 2 * kLaneBits))) >> shift;
    return static_cast<Argb>(0xFF000000 | (lanes & 0xFF) | (lanes >> (kLaneBits - 8) & 0xFF00) |
                             (lanes >> (2 * kLaneBits - 16) & 0xFF0000));
}

}  // namespace

BlockMeans::BlockMeans(CZellap& chart, const ColourTable& colours, int factor, int first, int end)
    : chart_(chart), factor_(factor), size_(chart.GetDocumentSize()), left_(std::int64_t{first} * factor) {
    columns_ = std::min<std::int64_t>(std::int64_t{end} * factor, size_.cx) - left_;
    std::transform(colours.begin(), colours.end(), lanes_.begin(), lanes_of);
    indexes_.resize(static_cast<std::size_t>(std::min(columns_, kMostColumns)));
    lines_.resize(static_cast<std::size_t>(end - first));
    sums_.resize(lines_.size());
}

bool BlockMeans::read(int row, Argb* pixels, const std::function<bool()>& goes_on) {
    std::fill(lines_.begin(), lines_.end(), Lanes{0});
    std::fill(sums_.begin(), sums_.end(), Sum());
    const std::int64_t first = std::int64_t{row} * factor_;
    const std::int64_t end = std::min<std::int64_t>(first + factor_, size_.cy);
    const int flush_after = std::max(kLanePixels / factor_, 1);
    for (std::int64_t line = first; line < end; ++line) {
        if (!add_line(static_cast<int>(line), goes_on)) return false;
        if ((line - first + 1) % flush_after == 0 && line + 1 < end) flush();
    }
    // Blocks of a power of two pixels that fit into the lanes need no division.
    const std::int64_t count = (end - first) * factor_;
    const bool is_fast = count <= kLanePixels && (count & (count - 1)) == 0;
    const std::size_t fast = is_fast ? static_cast<std::size_t>(columns_ / factor_) : 0;
    for (std::size_t i = 0; i < fast; ++i)
        pixels[i] = mean_of_lanes(lines_[i], count);
    if (fast < lines_.size()) flush();
    for (std::size_t i = fast; i < sums_.size(); ++i)
        pixels[i] = mean(sums_[i], static_cast<std::uint64_t>((end - first) * width_of(i)));
    return true;
}

std::int64_t BlockMeans::width_of(std::size_t block) const {
    return std::min(columns_ - static_cast<std::int64_t>(block) * factor_, std::int64_t{factor_});
}

bool BlockMeans::add_line(int line, const std::function<bool()>& goes_on) {
    std::size_t block = 0;
    std::int64_t rest = lines_.empty() ? 0 : width_of(0);
    const std::int64_t full = columns_ / factor_;
    for (std::int64_t done = 0; done < columns_;) {
        const std::int64_t count = std::min(columns_ - done, kMostColumns);
        if (!goes_on() || chart_.getMultiLines(line, 1, static_cast<int>(left_ + done),
                                               static_cast<int>(count), indexes_.data()) == 0) {
            return false;
        }
        const unsigned char* index = indexes_.data();
        for (std::int64_t left = count; left > 0;) {
            const bool is_first_of_block = rest == factor_ && factor_ <= kLanePixels;
            const std::int64_t blocks =
                is_first_of_block ? std::min(left / factor_, full - static_cast<std::int64_t>(block)) : 0;
            if (blocks > 0) {
                add_blocks(index, block, blocks);
                index += blocks * factor_;
                left -= blocks * factor_;
                block += static_cast<std::size_t>(blocks);
                if (block < lines_.size()) rest = width_of(block);
                continue;
            }
            const std::int64_t run = std::min({rest, left, std::int64_t{kLanePixels}});
            const Lanes lanes = sum_of(index, run);
            // A line of a wide block passes the lanes by itself.
            if (factor_ > kLanePixels)
                add(sums_[block], lanes);
            else
                lines_[block] += lanes;
            index += run;
            left -= run;
            rest -= run;
            if (rest == 0 && ++block < lines_.size()) rest = width_of(block);
        }
        done += count;
    }
    return true;
}

BlockMeans::Lanes BlockMeans::sum_of(const unsigned char* indexes, std::int64_t count) const {
    constexpr std::int64_t kGroup = 8;
    Lanes lanes = 0;
    std::int64_t i = 0;
    for (; i + kGroup <= count; i += kGroup) {
        std::uint64_t group;
        std::memcpy(&group, indexes + i, sizeof group);
        // Most groups of a drawn chart have one colour.
        if (group == indexes[i] * std::uint64_t{0x0101010101010101}) {
            lanes += kGroup * lanes_[indexes[i]];
            continue;
        }
        for (std::int64_t k = i; k < i + kGroup; ++k)
            lanes += lanes_[indexes[k]];
    }
    for (; i < count; ++i)
        lanes += lanes_[indexes[i]];
    return lanes;
}

// Adds full blocks of a line.
void BlockMeans::add_blocks(const unsigned char* indexes, std::size_t block, std::int64_t count) {
    Lanes* const lines = lines_.data() + block;
    if (factor_ == 2) {
        for (std::int64_t i = 0; i < count; ++i)
            lines[i] += lanes_[indexes[2 * i]] + lanes_[indexes[2 * i + 1]];
        return;
    }
    for (std::int64_t i = 0; i < count; ++i)
        lines[i] += sum_of(indexes + i * factor_, factor_);
}

void BlockMeans::flush() {
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        add(sums_[i], lines_[i]);
        lines_[i] = 0;
    }
}

}  // namespace zellap10::plotter
