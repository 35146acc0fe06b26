#include "zellap10/plotter/georeference.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

#include <zellap10/navigation/course.h>
#include <zellap10/plotter/direct_mode.h>
#include <zellap10/plotter/pixel_trace.h>
#include <zellap10/plotter/polygon.h>
#include <zellap10/plotter/projection_mode.h>

namespace zellap10::plotter {

namespace {

// Copies what conversions read. Texts and lists stay empty.
void copy_fit(const CGEORec& from, CGEORec& to) {
    to.LatitudeOffset = from.LatitudeOffset;
    to.LongitudeOffset = from.LongitudeOffset;
    to.Wraps180 = from.Wraps180;
    to.pwSplit = from.pwSplit;
    to.wpSplit = from.wpSplit;
    for (int region = 0; region < 2; ++region) {
        std::copy_n(from.wpxPoly[region], 21, to.wpxPoly[region]);
        std::copy_n(from.wpyPoly[region], 21, to.wpyPoly[region]);
        std::copy_n(from.pwxPoly[region], 21, to.pwxPoly[region]);
        std::copy_n(from.pwyPoly[region], 21, to.pwyPoly[region]);
    }
    to.ProjCode = from.ProjCode;
    to.ProjParms = from.ProjParms;
    std::copy_n(from.wpxAffine, 21, to.wpxAffine);
    std::copy_n(from.wpyAffine, 21, to.wpyAffine);
    std::copy_n(from.pwxAffine, 21, to.pwxAffine);
    std::copy_n(from.pwyAffine, 21, to.pwyAffine);
}

std::vector<Vector> pixels_of(const CRefPointList& points) {
    std::vector<Vector> pixels;
    for (const CRefPoint* point : points)
        pixels.push_back(pixel_of_point(*point));
    return pixels;
}

// Whether the transforms are those of a fit.
bool has_fit(const CGEORec& record) {
    if (record.ProjCode != 0) return plane_jacobian(record).is_regular();
    const Vector pixel = pixel_of_point(**record.Points.begin());
    const int region = record.SelectPWpoly(pixel.x, pixel.y);
    const auto map = [&record, region](Vector at) { return position_by(record, region, at); };
    return jacobian_of(map, pixel, map(pixel), 1.0).is_regular();
}

// The middle of the longitudes of the reference points, as the fit uses them.
double middle_longitude(const CGEORec& record) {
    double west = HUGE_VAL;
    double east = -HUGE_VAL;
    for (const CRefPoint* point : record.Points) {
        const double longitude = as_fitted(record, point->Longitude);
        west = std::min(west, longitude);
        east = std::max(east, longitude);
    }
    return 0.5 * west + 0.5 * east;
}

constexpr Vector kNone{std::numeric_limits<double>::quiet_NaN(), 0.0};

// How far outside a box a point is; 0 inside, and infinite if it is not finite.
double outside(const Box& box, Vector point) {
    if (!is_finite(point)) return HUGE_VAL;
    return std::max(
        {box.min.x - point.x, point.x - box.max.x, box.min.y - point.y, point.y - box.max.y, 0.0});
}

// An outline in the chart's own datum moved to WGS 84.
Outline shifted(Outline outline, const CGEORec& record) {
    outline.datum = Datum::kWgs84;
    for (Position& corner : outline.corners)
        corner = {corner.latitude + record.LatitudeOffset, corner.longitude + record.LongitudeOffset};
    return outline;
}

Vector vector_of(Position position) {
    return {position.longitude, position.latitude};
}

}  // namespace

struct Georeference::State {
    CGEORec record;                   // its fit alone
    std::vector<NewtonStart> starts;  // direct mode
    double middle = 0.0;              // longitude
    Box raster;
    Outline outline;
    std::optional<Extent> extent;
    Outline chart_datum_outline;
    PixelOutline pixel_outline;
    std::optional<double> metres_per_pixel;

    // The pixel of a longitude and latitude in the turn of the fit; not finite if there is none.
    Vector pixel_in_turn(Vector position) const {
        if (record.ProjCode != 0) return projected_pixel_of(record, position);
        return direct_pixel_of(record, position, start_for(record, starts, position)).value_or(kNone);
    }

    // The same with a pixel near it.
    Vector pixel_near(Vector position, Vector start) const {
        if (record.ProjCode != 0) return projected_pixel_of(record, position);
        return direct_pixel_of(record, position, start).value_or(kNone);
    }
};

Georeference::Georeference(std::shared_ptr<const State> state) : state_(std::move(state)) {}

std::optional<Georeference> Georeference::from(const CGEORec& record, CSize size) {
    const std::vector<Vector> pixels = pixels_of(record.Points);
    if (!span_area(pixels) || !has_fit(record)) return std::nullopt;
    const auto state = std::make_shared<State>();
    copy_fit(record, state->record);
    if (record.ProjCode == 0) state->starts = newton_starts(record);
    state->middle = middle_longitude(record);
    state->raster =
        size.cx > 0 && size.cy > 0 ? Box{{0.0, 0.0}, {size.cx - 1.0, size.cy - 1.0}} : box_around(pixels);
    state->chart_datum_outline = outline_of(record, Datum::kChart);
    state->outline = shifted(state->chart_datum_outline, record);
    state->extent = state->outline.extent();
    std::vector<Vector> corners;
    for (const Position corner : state->chart_datum_outline.corners)
        corners.push_back(vector_of(corner));
    state->pixel_outline = PixelOutline(trace_pixels(
        corners, [&state](Vector position) { return state->pixel_in_turn(position); },
        [&state](Vector position, Vector start) { return state->pixel_near(position, start); }));
    state->metres_per_pixel = metres_per_pixel_of(record);
    return Georeference(state);
}

std::optional<Position> Georeference::chart_datum_position_of(ChartPixel pixel) const {
    const CGEORec& record = state_->record;
    std::optional<Vector> position = Vector{};
    if (record.ProjCode == 0)
        record.pwxy(pixel.x, pixel.y, &position->x, &position->y);
    else
        position = projected_position_of(record, {pixel.x, pixel.y});
    if (!position || !is_finite(*position)) return std::nullopt;
    return Position{position->y, normalize_longitude(position->x)};
}

std::optional<ChartPixel> Georeference::pixel_of_chart_datum(Position position) const {
    const double middle = state_->middle;
    // Farther from the middle, a chart as wide as the earth may show the position on its other side.
    constexpr double kCertain = 90.0;
    const Vector target{longitude_near(position.longitude, middle), position.latitude};
    Vector pixel = state_->pixel_in_turn(target);
    if (std::fabs(target.x - middle) > kCertain) {
        const double turn = target.x < middle ? 360.0 : -360.0;
        const Vector other = state_->pixel_in_turn({target.x + turn, target.y});
        const double apart = outside(state_->raster, other);
        if (apart < outside(state_->raster, pixel)) pixel = other;
    }
    if (!is_finite(pixel)) return std::nullopt;
    return ChartPixel{pixel.x, pixel.y};
}

std::optional<Position> Georeference::position_of(ChartPixel pixel) const {
    const std::optional<Position> position = chart_datum_position_of(pixel);
    return position ? std::optional(to_wgs84(*position)) : std::nullopt;
}

std::optional<ChartPixel> Georeference::pixel_of(Position position) const {
    return pixel_of_chart_datum({position.latitude - state_->record.LatitudeOffset,
                                 position.longitude - state_->record.LongitudeOffset});
}

Position Georeference::to_wgs84(Position in_chart_datum) const {
    return {in_chart_datum.latitude + state_->record.LatitudeOffset,
            normalize_longitude(in_chart_datum.longitude + state_->record.LongitudeOffset)};
}

Position Georeference::to_chart_datum(Position wgs84) const {
    return {wgs84.latitude - state_->record.LatitudeOffset,
            normalize_longitude(wgs84.longitude - state_->record.LongitudeOffset)};
}

const Outline& Georeference::outline() const {
    return state_->outline;
}

const std::optional<Extent>& Georeference::extent() const {
    return state_->extent;
}

const Outline& Georeference::chart_datum_outline() const {
    return state_->chart_datum_outline;
}

const PixelOutline& Georeference::pixel_outline() const {
    return state_->pixel_outline;
}

bool Georeference::covers(Position position) const {
    return state_->outline.covers(position);
}

std::optional<double> Georeference::metres_per_pixel() const {
    return state_->metres_per_pixel;
}

std::optional<double> metres_per_pixel_of(const CGEORec& record) {
    std::optional<double> metres;
    double longest = 0.0;
    for (const CRefPoint* point : record.Points) {
        const CRefPoint& first = **record.Points.begin();
        const Vector apart = pixel_of_point(*point) - pixel_of_point(first);
        const double pixels = std::hypot(apart.x, apart.y);
        if (!(pixels > longest)) continue;
        longest = pixels;
        metres = kMetresPerNauticalMile *
                 m_distance(first.Latitude, first.Longitude, point->Latitude, point->Longitude) / pixels;
    }
    return metres && std::isfinite(*metres) ? metres : std::nullopt;
}

}  // namespace zellap10::plotter
