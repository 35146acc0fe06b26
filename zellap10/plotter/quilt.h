#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <zellap10/plotter/catalogue.h>
#include <zellap10/plotter/colours.h>
#include <zellap10/plotter/map_view.h>
#include <zellap10/plotter/position.h>
#include <zellap10/plotter/viewport.h>

/// @file
///
/// Many charts as one seamless map.

namespace zellap10::plotter {

/// Draws the charts of a catalogue as one map.
///
/// On top is the most detailed chart that is still readable at the scale of the view: no more than 4 chart
/// pixels per screen pixel, and no more than 4 screen pixels per chart pixel. Coarser charts fill the gaps. A
/// chart beyond these limits is shown only where there is no other. A chart that would be smaller than 12
/// screen pixels is not shown. Each chart is clipped to its outline. The area of an inset and the 80 pixels
/// around it are not shown as a part of the chart that they are on.
///
/// When reducing, a screen pixel is the mean of the chart pixels that it covers, in true colour. When
/// enlarging, chart pixels are interpolated.
///
/// The quilt owns its chart objects. Its own worker threads open and decode the files; `draw` never waits for
/// them. One thread at a time may call a quilt. The only exception is std::bad_alloc.
class Quilt {
public:
    /// How a quilt works.
    struct Options {
        /// Limit of the decoded chart data; below 32 MiB counts as 32 MiB. Up to a quarter is used for the
        /// georeferences of charts. Those of the charts in view are always kept.
        std::size_t memory_bytes = std::size_t{256} << 20;
        int threads = 1;  ///< that draw, including the calling thread, 1 to 64
        /// Threads that decode, 1 to 64. If there are more threads and workers than cores, the workers pause
        /// while the quilt draws, for at most 10 ms per frame.
        int workers = 1;
        /// A worker thread calls it once after an incomplete `draw`, when more can be drawn. It must not call
        /// the quilt; it may post an event to the application's thread.
        std::function<void()> on_more;
    };

    /// What a bitmap shows.
    struct Result {
        /// False if some chart data is not decoded yet. Its place shows coarser data, other charts or the
        /// background.
        bool complete = false;
        /// Whether rows of pixels repeat, see draw_draft.
        bool draft = false;
        /// The charts that the view shows, uppermost first.
        std::vector<const CatalogueEntry*> charts;
    };

    /// A chart at a place of the screen.
    struct Hit {
        const CatalogueEntry* entry;  ///< never null; valid as long as the catalogue
        ChartPixel pixel;             ///< on the raster of the entry's file
    };

    /// A chart file that cannot be shown.
    struct Problem {
        std::string path;  ///< of the chart file
        std::string text;  ///< the reason in English
    };

    /// @param catalogue  not null; add nothing to it from now on
    /// @param options    numbers out of range are held at their limits
    explicit Quilt(std::shared_ptr<const Catalogue> catalogue, Options options);

    /// The same with the default options.
    explicit Quilt(std::shared_ptr<const Catalogue> catalogue);

    /// Stops the worker threads, within 0.2 s.
    ~Quilt();
    Quilt(const Quilt&) = delete;
    Quilt& operator=(const Quilt&) = delete;

    /// Replaces the catalogue. Charts that are in both stay decoded.
    void set_catalogue(std::shared_ptr<const Catalogue> catalogue);

    /// Draws what is decoded. The worker threads decode the rest for a later draw.
    ///
    /// The choice of charts has hysteresis: a chart that was within the limits of scale counts as within them
    /// until the view exceeds them by a tenth. If moved_by has moved the last view by whole screen pixels,
    /// only the part that came into view takes time.
    ///
    /// @param view        as large as the bitmap; otherwise only the upper left part that both have is drawn
    /// @param scheme      a new scheme needs no decoding
    /// @param background  drawn unchanged where there is no chart
    /// @param bitmap      receives every pixel of the view
    Result draw(const MapView& view, ColourScheme scheme, Argb background, const Bitmap& bitmap);

    /// The same in about half of the time, for a view that turns or changes its scale: each second row of
    /// pixels repeats the one above it. Such a draft counts as incomplete. If the view is the last one, or
    /// moved_by has moved that by whole screen pixels, the pixels are those of `draw`: when the view comes to
    /// rest, draw it once more.
    Result draw_draft(const MapView& view, ColourScheme scheme, Argb background, const Bitmap& bitmap);

    /// Waits until all is decoded, and draws it. The pixels depend on nothing but the view and the files: a
    /// web tile has the pixels of the same area of a larger view at the same zoom.
    ///
    /// @return  complete is false if memory ran out
    Result draw_complete(const MapView& view, ColourScheme scheme, Argb background, const Bitmap& bitmap);

    /// The chart shown at a screen pixel, among those that the last draw could show.
    ///
    /// @return  empty where the background is shown
    [[nodiscard]] std::optional<Hit> at(const MapView& view, ScreenPixel pixel);

    /// The chart files that a draw needed but could not show, in order of their paths. Such a file is tried
    /// again when its size or time changes.
    [[nodiscard]] std::vector<Problem> problems() const;

private:
    class Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace zellap10::plotter
