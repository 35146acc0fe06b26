#pragma once

#include <viewer/types.h>

namespace viewer {

/// What part of a chart the window shows, and how much reduced. The chart is cut into blocks of as many
/// pixels a side as the reduction says, from its upper left, and a window pixel shows one block.
class Camera {
public:
    /// The reductions, from the closest to the widest view.
    static constexpr int kReductions[] = {1, 2, 3, 4, 6, 8, 12, 16};
    static constexpr int kSteps = sizeof kReductions / sizeof kReductions[0];

    /// Takes another size of window; what was in the middle stays there.
    void resize(ScreenSize window);

    /// Takes another chart and shows the whole of it, as far as the widest view does.
    void show(ScreenSize chart);

    /// Moves the chart by window pixels. The middle of the window stays on the chart.
    void pan(int right, int down);

    /// Goes to closer views, or to wider ones for steps below 0. What is at the spot stays there, unless the
    /// window would leave the chart.
    void zoom(int steps, ScreenPixel spot);

    /// Puts a pixel of the chart in the middle of the window, in the view with a reduction.
    ///
    /// @param step  index of kReductions, held at its ends
    void centre_on(ChartPixel pixel, int step);

    /// The step whose reduction is nearest to a number, in proportion.
    static int step_near(double reduction);

    ChartPixel to_chart(ScreenPixel spot) const;
    ScreenPixel to_window(ChartPixel pixel) const;

    const zellap10::plotter::Viewport& part() const { return part_; }
    int step() const { return step_; }
    ScreenSize window() const { return window_; }
    ScreenSize chart() const { return chart_; }
    ScreenPixel middle() const { return {(window_.width - 1) / 2.0, (window_.height - 1) / 2.0}; }

    /// The chart's size in blocks, those included that its right and lower edge cut.
    ScreenSize blocks() const;

private:
    void set_step(int step);
    void put(ChartPixel pixel, ScreenPixel spot);

    ScreenSize window_;
    ScreenSize chart_;
    int step_ = 0;
    zellap10::plotter::Viewport part_;
};

}  // namespace viewer
