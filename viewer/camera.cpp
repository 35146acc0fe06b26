#include "viewer/camera.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace viewer {

namespace {

// The first block of a window that has its middle on the chart.
int held(double first, int window, int blocks) {
    const int half = window / 2;
    const double least = -half;
    const double most = std::max(blocks - 1, 0) - half;
    return static_cast<int>(std::clamp(std::round(first), least, most));
}

int blocks_of(int pixels, int reduction) {
    return pixels / reduction + (pixels % reduction > 0);
}

}  // namespace

ScreenSize Camera::blocks() const {
    return {blocks_of(chart_.width, part_.reduction), blocks_of(chart_.height, part_.reduction)};
}

void Camera::set_step(int step) {
    step_ = std::clamp(step, 0, kSteps - 1);
    part_.reduction = kReductions[step_];
}

// Shows a pixel of the chart at a spot.
void Camera::put(ChartPixel pixel, ScreenPixel spot) {
    const ScreenPixel now = to_window(pixel);
    const ScreenSize size = blocks();
    part_.column = held(part_.column + now.x - spot.x, window_.width, size.width);
    part_.row = held(part_.row + now.y - spot.y, window_.height, size.height);
}

void Camera::resize(ScreenSize window) {
    const ChartPixel centre = to_chart(middle());
    window_ = window;
    put(centre, middle());
}

void Camera::show(ScreenSize chart) {
    chart_ = chart;
    const auto fits = [&] { return blocks().width <= window_.width && blocks().height <= window_.height; };
    for (set_step(0); step_ < kSteps - 1 && !fits();)
        set_step(step_ + 1);
    put({(chart.width - 1) / 2.0, (chart.height - 1) / 2.0}, middle());
}

void Camera::pan(int right, int down) {
    const ScreenPixel spot = middle();
    put(to_chart(spot), {spot.x + right, spot.y + down});
}

void Camera::zoom(int steps, ScreenPixel spot) {
    const ChartPixel fixed = to_chart(spot);
    set_step(step_ - std::clamp(steps, -kSteps, kSteps));
    put(fixed, spot);
}

void Camera::centre_on(ChartPixel pixel, int step) {
    set_step(step);
    put(pixel, middle());
}

int Camera::step_near(double reduction) {
    const auto farness = [reduction](int r) { return std::abs(std::log(reduction / r)); };
    const auto nearer = [&](int a, int b) { return farness(a) < farness(b); };
    return static_cast<int>(std::min_element(std::begin(kReductions), std::end(kReductions), nearer) -
                            std::begin(kReductions));
}

ChartPixel Camera::to_chart(ScreenPixel spot) const {
    return part_.to_chart(spot);
}

ScreenPixel Camera::to_window(ChartPixel pixel) const {
    return part_.to_screen(pixel);
}

}  // namespace viewer
