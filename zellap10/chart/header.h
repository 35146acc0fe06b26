#pragma once

#include <zellap10/chart/zellap.h>

namespace zellap10::chart {

/// The text part of a chart file; the fields are those of the chart object.
struct Header {
    char name[sizeof CZellap::ChartName];
    int du;
    int width;
    int height;
    PALETTEENTRY colours[256];
    int colour_count;
};

/// Reads the text part from the chart's TextStream, to its end. Fields that the text does not name are those
/// of the chart, which does not change.
Header read_header(CZellap& chart);

/// Copies a header to the chart and sets InsetRect of the base record. If that record has points of an
/// earlier open and infoOnly is 0, it is fitted again.
void take_header(const Header& header, int infoOnly, CZellap& chart);

}  // namespace zellap10::chart
