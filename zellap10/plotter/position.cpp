#include <zellap10/plotter/position.h>

#include <cmath>

namespace zellap10::plotter {

namespace {

// Whether pixels that differ have positions that differ: a fit of too few points, or of none, is flat.
bool has_area(const double* over_first, const double* over_second) {
    return over_first[1] * over_second[2] - over_first[2] * over_second[1] != 0.0;
}

}  // namespace

bool is_fitted(const CGEORec& record) {
    return record.ProjCode == 0 ? has_area(record.pwxPoly[0], record.pwyPoly[0])
                                : has_area(record.pwxAffine, record.pwyAffine);
}

std::optional<Position> position_of(const CGEORec& record, Pixel pixel) {
    if (!is_fitted(record)) return std::nullopt;
    Position position;
    record.pwxy(pixel.x, pixel.y, &position.longitude, &position.latitude);
    if (!std::isfinite(position.latitude) || !std::isfinite(position.longitude)) return std::nullopt;
    return position;
}

}  // namespace zellap10::plotter
