#pragma once

#include <zellap10/chart/zellap.h>

namespace zellap10::chart {

/// What the text part of a chart file says; each is a field of the chart object.
struct Header {
    char name[sizeof CZellap::ChartName];
    int du;
    int width;
    int height;
    PALETTEENTRY colours[256];
    int colour_count;
};

/// Reads the text part at whose start the chart's TextStream stands, to the stream's end. What the text does
/// not name is as the chart has it; the chart itself stays as it is.
Header read_header(CZellap& chart);

/// Gives a chart its header, and the base record what comes of it: InsetRect and, with infoOnly 0, a new fit
/// where it has points of an earlier open.
void take_header(const Header& header, int infoOnly, CZellap& chart);

}  // namespace zellap10::chart
