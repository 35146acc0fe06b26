#include "zellap10/plotter/projection_mode.h"

#include <cmath>

#include <zellap10/platform/angle.h>

namespace zellap10::plotter {

namespace {

constexpr int kPassesPerJacobian = 3;  // near the chart these leave 1e-8 metres
constexpr int kMaxPasses = 50;
constexpr double kMetres = 1e-8;  // rounding error near the chart
constexpr double kConvergedMetres = 1e-7;
constexpr double kConvergedStep = 1e-12;  // degrees; near a pole of Mercator's this is many metres
constexpr double kStepDegrees = 1e-5;     // a metre, for the Jacobian

Vector project(const CGEORec& record, Vector position) {
    Vector plane;
    record.ProjFwd(position.x, position.y, &plane.x, &plane.y);
    return plane;
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

// Newton's method. The first passes share a Jacobian. Only far from the chart more are needed, each with its
// own.
std::optional<Vector> refine(const CGEORec& record, Vector position, Vector plane) {
    const auto forward = [&record](Vector at) { return project(record, at); };
    Vector reached = forward(position);
    Jacobian jacobian = jacobian_of(forward, position, reached, kStepDegrees);
    bool is_own = true;  // the Jacobian is that of the position
    double miss = distance(reached, plane);
    double step_degrees = HUGE_VAL;
    for (int pass = 1; pass <= kMaxPasses && miss > kMetres; ++pass) {
        const Vector step = jacobian.inverse(plane - reached);
        const Vector next = position + step;
        const Vector next_reached = forward(next);
        const double next_miss = distance(next_reached, plane);
        const bool is_nearer = next_miss < miss;
        step_degrees = distance(step, {});
        if (is_nearer) {
            position = next;
            reached = next_reached;
            miss = next_miss;
        } else if (is_own || step_degrees <= kConvergedStep) {
            break;
        }
        is_own = !is_nearer || pass >= kPassesPerJacobian;
        if (is_own) jacobian = jacobian_of(forward, position, reached, kStepDegrees);
    }
    const bool converged = miss <= kConvergedMetres || step_degrees <= kConvergedStep;
    if (!converged || !is_in_reach(record, position) || std::fabs(position.y) > 90.0) return std::nullopt;
    return position;
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
    return refine(record, position, plane);
}

std::optional<Vector> projected_pixel_of(const CGEORec& record, Vector position) {
    if (!is_in_reach(record, position)) return std::nullopt;
    return plane_jacobian(record).inverse(project(record, position) -
                                          Vector{record.pwxAffine[0], record.pwyAffine[0]});
}

}  // namespace zellap10::plotter
