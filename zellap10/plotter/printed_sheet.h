#pragma once

/// @file
///
/// One chart as it is printed, drawn without waiting.

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include <zellap10/chart/zellap.h>
#include <zellap10/plotter/colours.h>
#include <zellap10/plotter/position.h>
#include <zellap10/plotter/sheet.h>
#include <zellap10/plotter/viewport.h>

namespace zellap10::plotter {

class BackgroundTask;

/// A view of one chart as it is printed, with its insets in their places, at full size or reduced. A thread
/// of its own decodes the chart, so that no function waits for a file once the chart is open.
///
/// Call the functions from one thread. A change of the view keeps a pixel of the chart in the middle of the
/// view. Coordinates that are not finite move the view to an edge of the chart.
class PrintedSheet {
public:
    /// Opens a chart. The view is empty until `resize` is called.
    ///
    /// @param path       the chart file
    /// @param on_change  called by the thread when there is more to draw; may be empty. It must not call this
    ///                   object
    /// @return           null if the chart cannot be opened or has no pixels. For the first, diagnose_chart
    ///                   explains why
    [[nodiscard]] static std::unique_ptr<PrintedSheet> open(const std::string& path,
                                                            std::function<void()> on_change = {});

    /// Waits for the thread, for 0.15 s at most. If the thread is reading a longer line, it ends by itself
    /// afterwards.
    ~PrintedSheet();
    PrintedSheet(const PrintedSheet&) = delete;
    PrintedSheet& operator=(const PrintedSheet&) = delete;

    /// Asks the thread to end and does not wait for it. Call it first to destroy several objects at the same
    /// time.
    void stop();

    const std::string& path() const { return path_; }  ///< of the chart file, as it was opened
    const std::string& name() const { return name_; }  ///< of the chart; of its file if the chart has none
    ScreenSize size() const;                           ///< of the chart, in pixels of the chart

    /// The record of the chart or of an inset.
    ///
    /// @param inset  an index in georeferences().insets(); empty for the chart itself
    const CGEORec& record(std::optional<int> inset = std::nullopt) const;

    /// The georeferences of the chart and its insets.
    const Sheet& georeferences() const { return georeferences_; }

    /// The part of the chart that the view shows.
    const Viewport& viewport() const { return viewport_; }

    /// Changes the size of the view; sides below 0 count as 0.
    void resize(ScreenSize view);

    /// Shows the complete chart, or as much as the greatest reduction of 64 does.
    void show_all();

    /// Shows a pixel of the chart in the middle of the view.
    ///
    /// @param pixel      of the chart
    /// @param reduction  chart pixels per screen pixel, above 0; the nearest available one is used
    void show(ChartPixel pixel, double reduction);

    /// Moves the chart by screen pixels. The middle of the view stays on the chart.
    void pan(double right, double down);

    /// Changes the reduction around a screen pixel.
    ///
    /// @param steps  in the list of reductions, positive for a closer view
    /// @param about  stays on its pixel of the chart, unless the middle of the view would leave the chart
    void zoom(int steps, ScreenPixel about);

    /// Draws what is decoded, and the rest as well as it is known from the view before.
    ///
    /// @param scheme      the colours
    /// @param background  the colour outside the chart
    /// @param bitmap      receives the pixels. Its size is that of the view
    /// @return            false if something is not decoded yet, or if the sizes differ (then nothing is
    ///                    drawn)
    bool draw(ColourScheme scheme, Argb background, const Bitmap& bitmap);

    /// Whether lines of the chart could not be read. They have the background colour.
    bool is_damaged() const;

private:
    class Job;

    PrintedSheet(const std::string& path, std::shared_ptr<CZellap> chart, std::function<void()> on_change);

    void put(ChartPixel pixel, int step, ScreenPixel at);
    ScreenPixel middle() const { return {(viewport_.width - 1) / 2.0, (viewport_.height - 1) / 2.0}; }

    std::string path_;
    std::string name_;
    std::shared_ptr<CZellap> chart_;
    Sheet georeferences_;
    int step_ = 0;
    Viewport viewport_;
    std::shared_ptr<Job> job_;
    std::unique_ptr<BackgroundTask> task_;
};

}  // namespace zellap10::plotter
