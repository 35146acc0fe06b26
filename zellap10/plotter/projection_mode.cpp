#include "zellap10/plotter/projection_mode.h"

#include <cmath>
#include <limits>

#include <zellap10/platform/angle.h>

namespace zellap10::plotter {

namespace {

constexpr int kPassesNear = 3;  // these leave 1e-8 metres
constexpr int kMaxPasses = 50;
constexpr double kMetres = 1e-8;  // rounding error near the chart
constexpr double kConvergedMetres = 1e-7;
constexpr double kConvergedStep = 1e-12;  // degrees; near a pole of Mercator's this is many metres
constexpr double kStepDegrees = 1e-5;     // a metre, for the Jacobian

Vector project(const CGEORec& record, Vector position) {
    double easting = 0.0;
    double northing = 0.0;
    record.ProjFwd(position.x, position.y, &easting, &northing);
    return {easting, northing};
}

// How far from the central meridian a projection has a meaning, DEGREES.
double reach_of(int code) {
    constexpr int kPolyconic = 2;
    constexpr int kTransverseMercator = 3;
    return code == kTransverseMercator ? 90.0 : code == kPolyconic ? 180.0 : HUGE_VAL;
}

bool is_in_reach(const CGEORec& record, Vector position) {
    const double meridian = record.ProjParms.lon0 * platform::RAD_TO_DEG;
    return std::fabs(position.x + record.LongitudeOffset - meridian) <= reach_of(record.ProjCode);
}

// Far from the chart, each pass needs its own Jacobian.
std::optional<Vector> refine_far(const CGEORec& record, Vector position, Vector plane) {
    const auto forward = [&record](Vector at) { return project(record, at); };
    Vector reached = forward(position);
    double miss = distance(reached, plane);
    for (int pass = 0; pass < kMaxPasses && miss > kConvergedMetres; ++pass) {
        const Jacobian jacobian = jacobian_of(forward, position, reached, kStepDegrees);
        const Vector step = jacobian.inverse(plane - reached);
        if (distance(step, {}) <= kConvergedStep) return position;
        const Vector next = position + step;
        reached = forward(next);
        const double next_miss = distance(reached, plane);
        if (!(next_miss < miss)) return std::nullopt;
        miss = next_miss;
        position = next;
    }
    return miss <= kConvergedMetres ? std::optional(position) : std::nullopt;
}

// Newton's method. Near the chart a few passes with one Jacobian are enough.
std::optional<Vector> refine(const CGEORec& record, Vector position, Vector plane) {
    const auto forward = [&record](Vector at) { return project(record, at); };
    Vector reached = forward(position);
    const Jacobian jacobian = jacobian_of(forward, position, reached, kStepDegrees);
    double miss = distance(reached, plane);
    for (int pass = 0; pass < kPassesNear && miss > kMetres; ++pass) {
        const Vector next = position + jacobian.inverse(plane - reached);
        reached = forward(next);
        const double next_miss = distance(reached, plane);
        if (!(next_miss < miss)) break;
        miss = next_miss;
        position = next;
    }
    return miss <= kConvergedMetres ? std::optional(position) : refine_far(record, position, plane);
}

}  // namespace

Jacobian plane_jacobian(const CGEORec& record) {
    return {record.pwxAffine[1], record.pwxAffine[2], record.pwyAffine[1], record.pwyAffine[2]};
}

std::optional<Vector> projected_position_of(const CGEORec& record, Vector pixel) {
    Vector position;
    record.pwxy(pixel.x, pixel.y, &position.x, &position.y);
    const Vector plane{record.Evaluate(record.pwxAffine, pixel.x, pixel.y),
                       record.Evaluate(record.pwyAffine, pixel.x, pixel.y)};
    const std::optional<Vector> refined = refine(record, position, plane);
    if (!refined || !is_in_reach(record, *refined) || std::fabs(refined->y) > 90.0) return std::nullopt;
    return refined;
}

Vector projected_pixel_of(const CGEORec& record, Vector position) {
    constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
    if (!is_in_reach(record, position)) return {kNone, kNone};
    return plane_jacobian(record).inverse(project(record, position) -
                                          Vector{record.pwxAffine[0], record.pwyAffine[0]});
}

}  // namespace zellap10::plotter
