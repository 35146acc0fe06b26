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

/// By day texts are dark on light paper, at dusk and at night light on dark paper.
const Theme& theme_for(ColourScheme scheme);

}  // namespace viewer
