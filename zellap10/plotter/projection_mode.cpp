#include "zellap10/plotter/projection_mode.h"

#include <cmath>

namespace zellap10::plotter {

namespace {

constexpr int kPassesNear = 3;  // these leave 1e-8 metres
constexpr int kMaxPasses = 50;
constexpr double kMetres = 1e-8;  // rounding error near the chart
constexpr double kConvergedMetres = 1e-7;
constexpr double kConvergedStep = 1e-12;  // degrees; near a pole of Mercator's this is many metres
constexpr double kStepDegrees = 1e-5;     // a metre, for the Jacobian

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

std::optional<Vector> projected_position_of(const CGEORec& record, Vector pixel) {
    const Vector plane{record.Evaluate(record.pwxAffine, pixel.x, pixel.y),
                       record.Evaluate(record.pwyAffine, pixel.x, pixel.y)};
    Vector position;
    record.ProjInv(plane.x, plane.y, &position.x, &position.y);
    const std::optional<Vector> refined = refine(record, position, plane);
    if (!refined || !is_in_reach(record, *refined) || std::fabs(refined->y) > 90.0) return std::nullopt;
    return refined;
}

}  // namespace zellap10::plotter
