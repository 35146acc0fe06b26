#include <algorithm>
#include <cstdint>
#include <limits>

#include <zellap10/chart/colour.h>
#include <zellap10/chart/zellap.h>

namespace {

using zellap10::chart::distance;

constexpr int kLargestPalette = 256;

// A pass halves the threshold, then adds colours that are farther than that from every entry.
constexpr int kFirstThreshold = 195075;  // black to white
constexpr int kLastThreshold = 768;

unsigned char mean(unsigned char a, unsigned char b) {
    return static_cast<unsigned char>((a + b) / 2 & 0xF8);
}

PALETTEENTRY between(const PALETTEENTRY& a, const PALETTEENTRY& b) {
    return {mean(a.peRed, b.peRed), mean(a.peGreen, b.peGreen), mean(a.peBlue, b.peBlue), 0};
}

// The entries that a candidate is compared with, one array per channel. Compilers then compare eight at once,
// in a third of the time. Unused elements hold a colour that is far from all.
class Measured {
public:
    Measured() {
        std::fill_n(red_, kLargestPalette, kFar);
        std::fill_n(green_, kLargestPalette, kFar);
        std::fill_n(blue_, kLargestPalette, kFar);
    }

    void set(int index, const PALETTEENTRY& colour) {
        red_[index] = colour.peRed;
        green_[index] = colour.peGreen;
        blue_[index] = colour.peBlue;
    }

    // Whether a colour is farther than the threshold from each entry below `count`. Stops after the first
    // group that has an entry within the threshold.
    bool all_far(const PALETTEENTRY& colour, int count, int threshold) const {
        for (int first = 0; first < count; first += kGroup) {
            int least = std::numeric_limits<int>::max();
            for (int k = first; k < first + kGroup; ++k) {
                const auto red = static_cast<std::int16_t>(red_[k] - colour.peRed);
                const auto green = static_cast<std::int16_t>(green_[k] - colour.peGreen);
                const auto blue = static_cast<std::int16_t>(blue_[k] - colour.peBlue);
                least = std::min(least, red * red + green * green + blue * blue);
            }
            if (least <= threshold) return false;
        }
        return true;
    }

private:
    static constexpr int kGroup = 16;
    static_assert(kLargestPalette % kGroup == 0, "the last group is complete");
    static constexpr std::int16_t kFar = 1024;

    std::int16_t red_[kLargestPalette];
    std::int16_t green_[kLargestPalette];
    std::int16_t blue_[kLargestPalette];
};

// One pass over the pairs of the entries at its start; false once the palette is full.
bool add_between_pairs(LOGPALETTE256& palette, Measured& measured, int threshold) {
    const int count = palette.palNumEntries;
    for (int i = 1; i < count; ++i) {
        for (int j = i + 1; j < count; ++j) {
            const PALETTEENTRY colour = between(palette.palPalEntry[i], palette.palPalEntry[j]);
            if (distance(colour, palette.palPalEntry[i]) <= threshold) continue;  // the likeliest to be near
            if (!measured.all_far(colour, palette.palNumEntries, threshold)) continue;
            measured.set(palette.palNumEntries, colour);
            palette.palPalEntry[palette.palNumEntries++] = colour;
            if (palette.palNumEntries == kLargestPalette) return false;
        }
    }
    return true;
}

}  // namespace

void CZellap::BuildPal() {
    // HeaderColourCount is public; the tables end at 256.
    const int count = std::clamp(HeaderColourCount, 0, kLargestPalette);
    // A copy: if memory runs out, LogPalette does not change. Entries after the new ones keep their values.
    LOGPALETTE256 palette = LogPalette;
    Measured measured;
    for (int i = 0; i < count; ++i) {
        const PALETTEENTRY& colour = HeaderColours[i];
        palette.palPalEntry[i] = {colour.peRed, colour.peGreen, colour.peBlue, 0};
        // Entry 0 stays in the palette but is never compared with.
        if (i > 0) measured.set(i, colour);
    }
    palette.palNumEntries = static_cast<unsigned short>(count);

    bool room = count < kLargestPalette;
    for (int threshold = kFirstThreshold; room && threshold > kLastThreshold;) {
        threshold /= 2;
        room = add_between_pairs(palette, measured, threshold);
    }
    PaletteHandle = CreatePalette(palette);
    LogPalette = palette;
}
