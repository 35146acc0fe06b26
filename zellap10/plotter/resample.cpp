#include <algorithm>
#include <cstring>

#include <zellap10/plotter/resample.h>

namespace zellap10::plotter {

namespace {

// Loops over channels have a fixed length, so that compilers turn them into vector instructions without a
// rest.
constexpr int kChannels = 4;
constexpr int kLoop = 32;
constexpr int kMostChannels = kMostResampled * kChannels;
constexpr int kMostColumns = 2 * kMostResampled + 3;
constexpr int kMostRow = (kMostColumns * kChannels + kLoop - 1) / kLoop * kLoop;
static_assert(kMostChannels % kLoop == 0, "loops fill the arrays");

int padded(int channels) {
    return (channels + kLoop - 1) / kLoop * kLoop;
}

template <int kTaps, class Value>
struct Channels {
    alignas(32) Value of[kTaps][kMostChannels];
};

template <int kTaps>
void set_weights(Channels<kTaps, std::uint16_t>& weights, const BoxWeights& table, std::int32_t edge,
                 std::int32_t step, int count) {
    for (int i = 0; i < count; ++i, edge += step) {
        const std::uint64_t* const lanes = table.at(edge);
        for (int tap = 0; tap < kTaps; ++tap)
            std::memcpy(weights.of[tap] + i * kChannels, lanes + tap, sizeof *lanes);
    }
}

// The analyzer takes padded() for something that may pass the channels that are set.
// NOLINTBEGIN(clang-analyzer-core.UndefinedBinaryOperatorResult)

// A sum of products has 16 bits; the upper eight are the mean.
template <class Value, class Mean>
void blend(const Channels<2, Value>& values, const Channels<2, std::uint16_t>& weights, int channels,
           Mean* means) {
    for (int start = 0; start < channels; start += kLoop) {
        for (int i = start; i < start + kLoop; ++i) {
            const auto sum = static_cast<std::uint16_t>(values.of[0][i] * weights.of[0][i] +
                                                        values.of[1][i] * weights.of[1][i] + 128);
            means[i] = static_cast<Mean>(sum >> 8);
        }
    }
}

template <class Value, class Mean>
void blend(const Channels<3, Value>& values, const Channels<3, std::uint16_t>& weights, int channels,
           Mean* means) {
    for (int start = 0; start < channels; start += kLoop) {
        for (int i = start; i < start + kLoop; ++i) {
            const auto sum = static_cast<std::uint16_t>(values.of[0][i] * weights.of[0][i] +
                                                        values.of[1][i] * weights.of[1][i] +
                                                        values.of[2][i] * weights.of[2][i] + 128);
            means[i] = static_cast<Mean>(sum >> 8);
        }
    }
}

// The means of one raster row under all boxes.
template <int kTaps, class Mean>
void blend_row(const unsigned char* row, const std::int32_t* offsets, int count,
               const Channels<kTaps, std::uint16_t>& weights, Mean* means) {
    Channels<kTaps, unsigned char> values;
    for (int i = 0; i < count; ++i) {
        for (int tap = 0; tap < kTaps; ++tap)
            std::memcpy(values.of[tap] + i * kChannels, row + offsets[i] + std::ptrdiff_t{tap} * kChannels,
                        kChannels);
    }
    blend(values, weights, count * kChannels, means);
}

// NOLINTEND(clang-analyzer-core.UndefinedBinaryOperatorResult)

struct Raster {
    const unsigned char* bytes;
    std::ptrdiff_t stride;  // bytes
};

template <int kTaps>
void resample_any(const Raster& raster, const BoxRow& boxes, const BoxWeights& across, const BoxWeights& down,
                  unsigned char* means) {
    const int count = padded(boxes.count * kChannels) / kChannels;
    std::int32_t offsets[kMostResampled];
    std::int32_t left = boxes.left;
    std::int32_t top = boxes.top;
    for (int i = 0; i < boxes.count; ++i, left += boxes.left_step, top += boxes.top_step) {
        offsets[i] = (top >> kFractionBits) * static_cast<std::int32_t>(raster.stride) +
                     (left >> kFractionBits) * kChannels;
    }
    std::fill(offsets + boxes.count, offsets + count, offsets[0]);
    Channels<kTaps, std::uint16_t> weights;
    set_weights(weights, across, boxes.left, boxes.left_step, count);
    Channels<kTaps, std::uint16_t> rows;
    for (int row = 0; row < kTaps; ++row)
        blend_row<kTaps>(raster.bytes + row * raster.stride, offsets, count, weights, rows.of[row]);
    set_weights(weights, down, boxes.top, boxes.top_step, count);
    blend(rows, weights, count * kChannels, means);
}

// Whether all boxes are in the same raster rows.
bool is_level(const BoxRow& boxes) {
    return boxes.top_step == 0 && boxes.left_step > 0 && boxes.left_step <= 2 * kOnePixel;
}

// The raster rows are blended to one before the boxes divide it.
template <int kTaps>
void resample_level(const Raster& raster, const BoxRow& boxes, const BoxWeights& across,
                    const BoxWeights& down, unsigned char* means) {
    const int count = padded(boxes.count * kChannels) / kChannels;
    const std::int32_t first = boxes.left >> kFractionBits;
    std::int32_t offsets[kMostResampled];
    std::int32_t left = boxes.left;
    for (int i = 0; i < boxes.count; ++i, left += boxes.left_step)
        offsets[i] = ((left >> kFractionBits) - first) * kChannels;
    std::fill(offsets + boxes.count, offsets + count, offsets[0]);
    const int channels = offsets[boxes.count - 1] + kTaps * kChannels;
    const unsigned char* const top =
        raster.bytes + (boxes.top >> kFractionBits) * raster.stride + std::ptrdiff_t{first} * kChannels;
    const unsigned char* const middle = top + raster.stride;
    const unsigned char* const bottom = kTaps == 3 ? middle + raster.stride : middle;
    const std::uint64_t* const lanes = down.at(boxes.top);
    const auto upper = static_cast<std::uint16_t>(lanes[0] & 0xFFFF);
    const auto central = static_cast<std::uint16_t>(lanes[1] & 0xFFFF);
    const auto lower = static_cast<std::uint16_t>(lanes[2] & 0xFFFF);
    alignas(32) unsigned char row[kMostRow];
    for (int i = 0; i < channels; ++i) {
        const auto sum =
            static_cast<std::uint16_t>(top[i] * upper + middle[i] * central + bottom[i] * lower + 128);
        row[i] = static_cast<unsigned char>(sum >> 8);
    }
    Channels<kTaps, std::uint16_t> weights;
    set_weights(weights, across, boxes.left, boxes.left_step, count);
    blend_row<kTaps>(row, offsets, count, weights, means);
}

}  // namespace

BoxWeights::BoxWeights(std::int32_t side) : is_bilinear_(side == kOnePixel), lanes_() {
    for (std::int32_t i = 0; i < 256; ++i) {
        const std::int32_t in_first = kOnePixel - i * 256;
        const std::int32_t in_third = std::max(side - in_first - kOnePixel, 0);
        const auto share = [side](std::int32_t part) {
            return static_cast<std::uint64_t>((std::int64_t{part} * 256 + side / 2) / side);
        };
        const std::uint64_t first = share(in_first);
        const std::uint64_t third = share(in_third);
        const std::uint64_t weights[] = {first, 256 - first - third, third};
        for (int tap = 0; tap < 3; ++tap)
            lanes_[i][tap] = weights[tap] * 0x0001000100010001;
    }
}

void resample(const Argb* raster, std::ptrdiff_t stride, const BoxRow& boxes, const BoxWeights& across,
              const BoxWeights& down, Argb* dest) {
    const Raster bytes{reinterpret_cast<const unsigned char*>(raster), stride * kChannels};
    alignas(32) unsigned char means[kMostChannels];
    const bool bilinear = across.is_bilinear() && down.is_bilinear();
    if (is_level(boxes))
        (bilinear ? resample_level<2> : resample_level<3>)(bytes, boxes, across, down, means);
    else
        (bilinear ? resample_any<2> : resample_any<3>)(bytes, boxes, across, down, means);
    std::memcpy(dest, means, static_cast<std::size_t>(boxes.count) * kChannels);
}

}  // namespace zellap10::plotter
