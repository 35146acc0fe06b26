#include <algorithm>
#include <cmath>
#include <cstring>
#include <iterator>

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
        const BoxWeights::Lanes* const lanes = table.at(edge);
        for (int tap = 0; tap < kTaps; ++tap)
            std::memcpy(weights.of[tap] + i * kChannels, lanes[tap], kChannels * sizeof *lanes[tap]);
    }
}

// The analyzer takes padded() for something that may pass the channels that are set.
// NOLINTBEGIN(clang-analyzer-core.UndefinedBinaryOperatorResult, clang-analyzer-core.CallAndMessage)

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

struct Raster {
    const unsigned char* bytes;
    std::ptrdiff_t stride;  // bytes
};

// Calls with the number of each box, its upper left corner, and the raster pixel in which that lies.
template <class Use>
void for_each_box(const Raster& raster, const BoxRow& boxes, Use use) {
    std::int32_t left = boxes.left;
    std::int32_t top = boxes.top;
    const std::int32_t left_step = boxes.left_step;
    const std::int32_t top_step = boxes.top_step;
    const std::ptrdiff_t count = boxes.count;
    for (std::ptrdiff_t i = 0; i < count; ++i, left += left_step, top += top_step) {
        use(i, left, top,
            raster.bytes + (top >> kFractionBits) * raster.stride +
                std::ptrdiff_t{left >> kFractionBits} * kChannels);
    }
}

// The mean of each byte of two words, by their weights in 256.
std::uint16_t mean_of(std::uint16_t a, std::uint16_t b, std::uint16_t weight_of_b) {
    const int weight = weight_of_b;
    const auto lower =
        static_cast<std::uint16_t>(((a & 0xFF) << 8) + ((b & 0xFF) - (a & 0xFF)) * weight + 128);
    const auto upper = static_cast<std::uint16_t>((a & 0xFF00) + ((b >> 8) - (a >> 8)) * weight + 128);
    return static_cast<std::uint16_t>(lower >> 8 | (upper & 0xFF00));
}

// Bilinear, along any line. A pixel is two words of two channels: without a conversion to wider channels this
// takes two thirds of the time.
void resample_bilinear(const Raster& raster, const BoxRow& boxes, unsigned char* dest) {
    constexpr int kWords = 2;
    constexpr int kLoopWords = kLoop / 2;
    using Words = std::uint16_t[kMostResampled * kWords];
    alignas(32) Words upper_left, upper_right, lower_left, lower_right, across, down, means;
    const std::ptrdiff_t count = boxes.count;
    for_each_box(
        raster, boxes,
        [&](std::ptrdiff_t i, std::int32_t left, std::int32_t top, const unsigned char* upper) {
            const unsigned char* const lower = upper + raster.stride;
            std::memcpy(upper_left + i * kWords, upper, kChannels);
            std::memcpy(upper_right + i * kWords, upper + kChannels, kChannels);
            std::memcpy(lower_left + i * kWords, lower, kChannels);
            std::memcpy(lower_right + i * kWords, lower + kChannels, kChannels);
            const std::uint32_t right_share = (static_cast<std::uint32_t>(left) >> 8 & 0xFF) * 0x10001;
            const std::uint32_t lower_share = (static_cast<std::uint32_t>(top) >> 8 & 0xFF) * 0x10001;
            std::memcpy(across + i * kWords, &right_share, sizeof right_share);
            std::memcpy(down + i * kWords, &lower_share, sizeof lower_share);
        });
    const std::ptrdiff_t padded_count = padded(boxes.count * kChannels) / kChannels;
    for (std::uint16_t* const words : {upper_left, upper_right, lower_left, lower_right, across, down})
        std::fill(words + count * kWords, words + padded_count * kWords, std::uint16_t{0});
    for (std::ptrdiff_t start = 0; start < padded_count * kWords; start += kLoopWords) {
        for (std::ptrdiff_t i = start; i < start + kLoopWords; ++i) {
            means[i] = mean_of(mean_of(upper_left[i], upper_right[i], across[i]),
                               mean_of(lower_left[i], lower_right[i], across[i]), down[i]);
        }
    }
    std::memcpy(dest, means, static_cast<std::size_t>(count) * kChannels);
}

// NOLINTEND(clang-analyzer-core.UndefinedBinaryOperatorResult, clang-analyzer-core.CallAndMessage)

std::uint64_t four_lanes(const std::uint16_t* lanes) {
    std::uint64_t result;
    std::memcpy(&result, lanes, sizeof result);
    return result;
}

// The rows under each box are blended to one, of four pixels, and then its first three pixels.
void resample_turned(const Raster& raster, const BoxRow& boxes, const BoxWeights& across,
                     const BoxWeights& down, unsigned char* dest) {
    constexpr std::uint64_t kHalves = 0x0080008000800080;
    constexpr int kLanes = 8;
    constexpr int kColumns = 4;
    alignas(32) std::uint16_t sums[kMostChannels];
    alignas(32) unsigned char means[kMostChannels];
    const std::ptrdiff_t count = boxes.count;
    for_each_box(raster, boxes,
                 [&](std::ptrdiff_t i, std::int32_t left, std::int32_t top, const unsigned char* upper) {
                     const unsigned char* const middle = upper + raster.stride;
                     const unsigned char* const lower = middle + raster.stride;
                     const BoxWeights::Lanes* const rows = down.at(top);
                     const BoxWeights::Lanes* const columns = across.at(left);
                     alignas(16) std::uint16_t blended[kColumns * kChannels];
                     for (int start = 0; start < kColumns * kChannels; start += kLanes) {
                         for (int k = 0; k < kLanes; ++k) {
                             const auto sum = static_cast<std::uint16_t>(upper[start + k] * rows[0][k] +
                                                                         middle[start + k] * rows[1][k] +
                                                                         lower[start + k] * rows[2][k] + 128);
                             blended[start + k] = static_cast<std::uint16_t>(sum >> 8);
                         }
                     }
                     const std::uint64_t sum = four_lanes(blended) * columns[0][0] +
                                               four_lanes(blended + kChannels) * columns[1][0] +
                                               four_lanes(blended + kChannels + kChannels) * columns[2][0] +
                                               kHalves;
                     std::memcpy(sums + i * kChannels, &sum, sizeof sum);
                 });
    std::fill(sums + count * kChannels, sums + padded(boxes.count * kChannels), std::uint16_t{0});
    for (std::ptrdiff_t start = 0; start < count * kChannels; start += kLoop) {
        for (std::ptrdiff_t i = start; i < start + kLoop; ++i)
            means[i] = static_cast<unsigned char>(sums[i] >> 8);
    }
    // cppcheck-suppress uninitvar ; count is at least 1
    std::memcpy(dest, means, static_cast<std::size_t>(count) * kChannels);
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
    const BoxWeights::Lanes* const lanes = down.at(boxes.top);
    const std::uint16_t upper = lanes[0][0];
    const std::uint16_t central = lanes[1][0];
    const std::uint16_t lower = lanes[2][0];
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

BoxWeights::BoxWeights(std::int32_t side) : lanes_(), is_bilinear_(side == kOnePixel) {
    for (std::int32_t i = 0; i < 256; ++i) {
        const std::int32_t in_first = kOnePixel - i * 256;
        const std::int32_t in_third = std::max(side - in_first - kOnePixel, 0);
        const auto share = [side](std::int32_t part) {
            return static_cast<int>((std::int64_t{part} * 256 + side / 2) / side);
        };
        const int first = share(in_first);
        const int third = share(in_third);
        const int weights[] = {first, 256 - first - third, third};
        for (int tap = 0; tap < 3; ++tap)
            std::fill(std::begin(lanes_[i][tap]), std::end(lanes_[i][tap]),
                      static_cast<std::uint16_t>(weights[tap]));
    }
}

const BoxWeights& BoxTables::of(double side) {
    const auto over = static_cast<std::int32_t>(std::lround((std::clamp(side, 1.0, 2.0) - 1.0) * 256.0));
    const std::lock_guard<std::mutex> lock(mutex_);
    auto& table = tables_[static_cast<std::size_t>(over)];
    if (table == nullptr) table = std::make_unique<const BoxWeights>(kOnePixel + over * 256);
    return *table;
}

void resample(const Argb* raster, std::ptrdiff_t stride, const BoxRow& boxes, const BoxWeights& across,
              const BoxWeights& down, Argb* dest) {
    const Raster bytes{reinterpret_cast<const unsigned char*>(raster), stride * kChannels};
    auto* const pixels = reinterpret_cast<unsigned char*>(dest);
    const bool bilinear = across.is_bilinear() && down.is_bilinear();
    if (!is_level(boxes)) {
        if (bilinear)
            resample_bilinear(bytes, boxes, pixels);
        else
            resample_turned(bytes, boxes, across, down, pixels);
        return;
    }
    alignas(32) unsigned char means[kMostChannels];
    (bilinear ? resample_level<2> : resample_level<3>)(bytes, boxes, across, down, means);
    // cppcheck-suppress uninitvar ; count is at least 1
    std::memcpy(pixels, means, static_cast<std::size_t>(boxes.count) * kChannels);
}

}  // namespace zellap10::plotter
