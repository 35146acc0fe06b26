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
/// chart beyond these limits is shown only where there is no other; one that would be smaller than 12 screen
/// pixels is not shown. Each chart is clipped to its outline, and an inset with the 80 pixels around it
/// belongs to no place of its sheet.
///
/// When reducing, a screen pixel is the mean of the chart pixels that it covers, in true colour. When
/// enlarging, chart pixels are interpolated.
///
/// The quilt owns its chart objects. Worker threads of its own open the files and decode them; `draw` never
/// waits for them. One thread at a time may call a quilt. Nothing is thrown but std::bad_alloc.
class Quilt {
public:
    /// How a quilt works.
    struct Options {
        /// Limit of the decoded chart data; below 32 MiB counts as 32 MiB.
        std::size_t memory_bytes = std::size_t{256} << 20;
        int threads = 1;  ///< that draw, with the calling one; 1 to 64
        int workers = 1;  ///< that decode, 1 to 64
        /// Called by a worker thread after an incomplete `draw`, once, when more can be drawn. It must not
        /// call the quilt; it may post an event to the application's thread.
        std::function<void()> on_more;
    };

    /// What a bitmap shows.
    struct Result {
        /// False if chart data that is not decoded yet was replaced by coarser data, by other charts or by
        /// the background.
        bool complete = false;
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

    /// @param catalogue  not null; nothing may be added to it any more
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

    /// Draws what is decoded, and has the rest decoded for a later draw.
    ///
    /// The choice of charts has hysteresis: a chart within the limits of its scale stays so until the view
    /// passes them by a tenth. A view that differs from the last one by whole screen pixels, by moved_by,
    /// costs only what came into view.
    ///
    /// @param view        of the bitmap's size; otherwise the bitmap's upper left part is drawn
    /// @param scheme      a change of it decodes nothing
    /// @param background  drawn unchanged where there is no chart
    /// @param bitmap      receives every pixel of the view
    Result draw(const MapView& view, ColourScheme scheme, Argb background, const Bitmap& bitmap);

    /// Draws completely and waits for it. The pixels depend on nothing but the view and the files: a web tile
    /// has the pixels of the same area of a larger view at the same zoom.
    ///
    /// @return  complete is false if memory ran out
    Result draw_complete(const MapView& view, ColourScheme scheme, Argb background, const Bitmap& bitmap);

    /// The chart shown at a screen pixel, among those that the last draw could show.
    ///
    /// @return  empty where the background is shown
    [[nodiscard]] std::optional<Hit> at(const MapView& view, ScreenPixel pixel);

    /// The chart files that a draw wanted to show and could not, by path. Such a file is tried again when its
    /// size or time changes.
    [[nodiscard]] std::vector<Problem> problems() const;

private:
    class Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace zellap10::plotter
