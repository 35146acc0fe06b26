#pragma once

#include <viewer/painter.h>

namespace viewer {

/// The colours of what is drawn on and around a chart.
struct Theme {
    Paper paper;
    Paper warning;
    Argb background = 0;  ///< where there is no chart
    Pen grid;
    Pen point;
    Pen route;
    Pen ship;
    Pen track;
    Pen outline;
};

// In the order of ColourScheme. At night lines are less dim than the chart, so that they stay visible on it.
// clang-format off
inline constexpr Theme kThemes[] = {
    {
        {0xFF101010, 0xFFFFFFFF, 0.92}, {0xFF701000, 0xFFFFF0D0, 1}, 0xFF808890,
        {0xFF2060C0, 1, 0}, {0xFF008030, 1.5, 0}, {0xFFD000A0, 2.5, 0},
        {0xFFC01000, 2, 0}, {0xFF804020, 1.5, 0}, {0xFF6030A0, 1, 6},
    }, {
        {0xFFC0C0C0, 0xFF181818, 0.92}, {0xFFE0B070, 0xFF181818, 1}, 0xFF404448,
        {0xFF143870, 1, 0}, {0xFF004818, 1.5, 0}, {0xFF900068, 2.5, 0},
        {0xFFB02010, 2, 0}, {0xFF482410, 1.5, 0}, {0xFF402070, 1, 6},
    }, {
        {0xFF785848, 0xFF080808, 0.92}, {0xFF905020, 0xFF080808, 1}, 0xFF1C1614,
        {0xFF182848, 1, 0}, {0xFF104820, 1.5, 0}, {0xFF983078, 2.5, 0},
        {0xFFA03018, 2, 0}, {0xFF603820, 1.5, 0}, {0xFF482868, 1, 6},
    },
};
// clang-format on

/// By day texts are dark on light paper, at dusk and at night light on dark paper.
inline const Theme& theme_for(ColourScheme scheme) {
    return kThemes[static_cast<int>(scheme)];
}

}  // namespace viewer
