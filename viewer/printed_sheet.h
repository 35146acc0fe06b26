#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <viewer/background_task.h>
#include <viewer/painter.h>
#include <zellap10/chart/zellap.h>
#include <zellap10/plotter/sheet.h>

namespace viewer {

/// One chart as it is printed, with its insets in their places, at full size or reduced. A thread of its own
/// decodes it.
class PrintedSheet {
public:
    /// Throws std::runtime_error with the reason if the chart cannot be opened.
    ///
    /// @param on_change  called by the thread when there is more to draw; may be empty
    PrintedSheet(const std::string& path, std::function<void()> on_change);
    void stop() { task_.stop(); }  ///< as BackgroundTask::stop

    const std::string& path() const { return path_; }
    const std::string& name() const { return name_; }
    ScreenSize size() const;
    const CGEORec& record() const { return *chart_->GetBaseGeoRec(); }
    const Sheet& georeferences() const { return georeferences_; }
    const Viewport& viewport() const { return viewport_; }

    void resize(ScreenSize window);
    void show_all();
    /// Shows a pixel in the middle of the window, at the nearest of the reductions.
    void show(ChartPixel pixel, double reduction);
    void pan(double right, double down);
    void zoom(int steps, ScreenPixel about);

    /// Draws what is decoded, and the rest as far as it is known from other views.
    ///
    /// @return  whether nothing is missing
    bool draw(ColourScheme scheme, Argb background, const Bitmap& bitmap);

    /// Whether lines could not be read.
    bool is_damaged() const;

private:
    class Job;

    void put(ChartPixel pixel, int step, ScreenPixel at);
    ScreenPixel middle() const { return {(viewport_.width - 1) / 2.0, (viewport_.height - 1) / 2.0}; }

    std::string path_;
    std::string name_;
    std::shared_ptr<CZellap> chart_;
    Sheet georeferences_;
    int step_ = 0;
    Viewport viewport_;
    std::shared_ptr<Job> job_;
    BackgroundTask task_;
};

}  // namespace viewer
