#include "zellap10/plotter/colours.h"

#include <algorithm>

namespace zellap10::plotter {

namespace {

// Percent of red, green and blue.
struct Dimming {
    Argb red, green, blue;
};

// In the order of ColourScheme.
constexpr Dimming kDimmings[] = {{100, 100, 100}, {50, 50, 50}, {28, 20, 16}};

Argb opaque(const PALETTEENTRY& entry) {
    return Argb{0xFF000000} | static_cast<Argb>(entry.peRed) << 16 | static_cast<Argb>(entry.peGreen) << 8 |
           entry.peBlue;
}

}  // namespace

Argb colour_in(ColourScheme scheme, Argb colour) {
    const Dimming& dimming = kDimmings[static_cast<int>(scheme)];
    const auto part = [colour](int shift, Argb percent) {
        return ((colour >> shift & 0xFF) * percent + 50) / 100 << shift;
    };
    return (colour & 0xFF000000) | part(16, dimming.red) | part(8, dimming.green) | part(0, dimming.blue);
}

ColourTable colours_of(const CZellap& chart, ColourScheme scheme) {
    PALETTEENTRY entries[256] = {};
    GetPaletteEntries(chart.GetPaletteHandle(), 0, 256, entries);
    ColourTable colours;
    std::transform(entries, entries + colours.size(), colours.begin(),
                   [scheme](const PALETTEENTRY& entry) { return colour_in(scheme, opaque(entry)); });
    return colours;
}

}  // namespace zellap10::plotter
