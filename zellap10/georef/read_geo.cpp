#include <algorithm>
#include <limits>

#include <zellap10/georef/geo_file.h>
#include <zellap10/georef/geo_record.h>
#include <zellap10/platform/file.h>
#include <zellap10/platform/whole_number.h>

namespace {

using zellap10::platform::whole_number;

// Pixels around the points of an inset that belong to it as well.
constexpr int kInsetMargin = 80;

// See CGEORec::InsetRect.
PixelRect rect_of(const CRefPointList& points) {
    if (points.IsEmpty()) return {};
    using Limits = std::numeric_limits<int>;
    PixelRect rect{Limits::max(), Limits::max(), Limits::min(), Limits::min()};
    for (const CRefPoint* point : points) {
        rect = {std::min(rect.left, point->X), std::min(rect.top, point->Y), std::max(rect.right, point->X),
                std::max(rect.bottom, point->Y)};
    }
    const auto moved = [](double pixel, int by) { return whole_number(pixel + by); };
    return {moved(rect.left, -kInsetMargin), moved(rect.top, -kInsetMargin), moved(rect.right, kInsetMargin),
            moved(rect.bottom, kInsetMargin)};
}

// Fits a record and sets the pixels of its vertices. They are truncated here, but ReadHeader adds 0.5 first
// (header.cpp). The interface defines both. After an open, the truncated pixels remain.
void fit_record(CGEORec& record) {
    record.solvepoly();
    for (CRefPoint* vertex : record.Vertices) {
        double x = 0.0;
        double y = 0.0;
        record.wpxy(vertex->Longitude, vertex->Latitude, &x, &y);
        vertex->X = whole_number(x);
        vertex->Y = whole_number(y);
    }
}

}  // namespace

// NOLINTNEXTLINE(performance-unnecessary-value-param): part of the interface
void CGEORec::ReadGEO(CString path, int infoOnly) {
    std::ifstream stream;
    if (!zellap10::platform::open_for_reading(stream, path)) return;
    zellap10::georef::read_entries(stream, *this);
    stream.close();
    if (infoOnly != 0) return;

    InsetRect = {};
    fit_record(*this);
    for (CGEORec* inset : Insets) {
        fit_record(*inset);
        inset->InsetRect = rect_of(inset->Points);
    }
}
