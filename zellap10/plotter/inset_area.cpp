#include <algorithm>

#include <zellap10/chart/zellap.h>
#include <zellap10/plotter/georeference.h>
#include <zellap10/plotter/inset_area.h>

namespace zellap10::plotter {

namespace {

constexpr double kMargin = 80.0;
constexpr int kPiecesOfEdge = 8;  // which follow an edge that is not straight in latitude and longitude

Outline outline_on_earth(const PixelOutline& area, const Georeference& chart) {
    Outline outline;
    const std::vector<ChartPixel>& corners = area.corners();
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const ChartPixel from = corners[i];
        const ChartPixel to = corners[(i + 1) % corners.size()];
        for (int piece = 0; piece < kPiecesOfEdge; ++piece) {
            const double share = static_cast<double>(piece) / kPiecesOfEdge;
            const auto position =
                chart.position_of({from.x + (to.x - from.x) * share, from.y + (to.y - from.y) * share});
            if (!position) return {};
            const double before =
                outline.corners.empty() ? position->longitude : outline.corners.back().longitude;
            outline.corners.push_back({position->latitude, longitude_near(position->longitude, before)});
        }
    }
    return outline;
}

std::vector<Outline> areas_of(const std::string& path, const FileStamp& stamp) {
    std::vector<Outline> areas;
    CZellap opened;
    if (opened.OpenZellap(path.c_str(), 1) == 0 || !(file_stamp(path) == stamp)) return areas;
    CGEORec& base = *opened.GetBaseGeoRec();
    base.solvepoly();
    const std::optional<Georeference> chart = Georeference::from(base, opened.GetDocumentSize());
    if (!chart) return areas;
    for (const CGEORec* inset : base.Insets) {
        Outline outline = outline_on_earth(inset_area(*inset), *chart);
        if (!outline.corners.empty()) areas.push_back(std::move(outline));
    }
    return areas;
}

}  // namespace

PixelOutline inset_area(const CGEORec& inset) {
    if (inset.Points.IsEmpty()) return {};
    const CRefPoint& first = **inset.Points.begin();
    double left = first.X;
    double right = left;
    double top = first.Y;
    double bottom = top;
    for (const CRefPoint* point : inset.Points) {
        left = std::min<double>(left, point->X);
        right = std::max<double>(right, point->X);
        top = std::min<double>(top, point->Y);
        bottom = std::max<double>(bottom, point->Y);
    }
    left -= kMargin;
    top -= kMargin;
    right += kMargin;
    bottom += kMargin;
    return PixelOutline({{left, top}, {right, top}, {right, bottom}, {left, bottom}});
}

const std::vector<Outline>& HiddenAreas::areas() const {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (!areas_) set(areas_of(path_, stamp_));
    return *areas_;
}

void HiddenAreas::set(std::vector<Outline> areas) const {
    extents_.clear();
    for (const Outline& area : areas)
        extents_.push_back(area.extent());
    areas_ = std::move(areas);
}

bool HiddenAreas::contain(Position position) const {
    const std::vector<Outline>& outlines = areas();
    for (std::size_t i = 0; i < outlines.size(); ++i) {
        if (extents_[i] && extents_[i]->contains(position) && outlines[i].covers(position)) return true;
    }
    return false;
}

std::optional<std::vector<Outline>> HiddenAreas::known() const {
    const std::lock_guard<std::mutex> lock(mutex_);
    return areas_;
}

}  // namespace zellap10::plotter
