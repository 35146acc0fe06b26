#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <viewer/camera.h>
#include <viewer/chart.h>
#include <viewer/chart_list.h>
#include <viewer/commands.h>
#include <viewer/painter.h>
#include <viewer/theme.h>
#include <viewer/tile_store.h>

namespace viewer {

enum class Button { kLeft, kRight };

/// What the viewer shows and what it does with mouse and keys. It draws into memory and knows no window
/// system.
class View {
public:
    struct Options {
        int workers = 1;                  ///< threads that draw tiles
        std::string save_folder = ".";    ///< for pictures that a key saves
        std::function<void()> on_change;  ///< called by any thread when there is something new to draw
    };

    /// @param charts  one at the least
    View(ChartList charts, Options options);

    /// @param window  higher than the bar at its lower edge
    void resize(ScreenSize window);

    void press(Button button, ScreenPixel spot);
    void release(Button button, ScreenPixel spot);
    void move(ScreenPixel spot);
    void leave();                ///< the pointer is no longer in the window
    void turn_wheel(int steps);  ///< above 0 for a closer view
    void do_command(Command command);

    /// Saves the view as a PNG picture as soon as its tiles are there, which a later draw() finds.
    void save(const std::string& path);

    /// Draws the view. It waits for nothing: while tiles are missing others stand in.
    ///
    /// @param picture  of the window's size; address and stride are multiples of 4
    void draw(const Bitmap& picture);

    /// Whether the last picture drawn was whole.
    bool is_complete() const { return complete_; }

    /// Whether the user wants to go.
    bool is_over() const { return over_; }

private:
    void show_chart(int index);
    void show_best();
    void add_waypoint(ScreenPixel spot);
    void take_waypoint_off();
    std::string free_path() const;
    bool go_to(const zellap10::plotter::CatalogueEntry& entry, const Position& wgs84, double metres_a_pixel);
    bool draw_tiles(const Bitmap& picture);
    void draw_over(Painter& painter);

    const Options options_;
    const ChartList charts_;
    int current_ = 0;  // of the list
    ScreenSize window_;
    std::unique_ptr<Chart> chart_;
    Camera camera_;                  // on the window without the bar
    std::map<int, Camera> cameras_;  // of the charts that were looked at before

    ColourScheme light_ = ColourScheme::kDay;
    bool shows_grid_ = false;
    bool shows_points_ = false;
    bool shows_help_ = false;
    std::vector<Position> route_;  // in WGS 84
    std::optional<ScreenPixel> pointer_;
    std::optional<ScreenPixel> pressed_;  // where the left button went down
    bool dragging_ = false;
    std::string message_;
    std::string save_path_;  // of a picture that is due
    bool complete_ = false;
    bool over_ = false;

    TileStore tiles_;
};

}  // namespace viewer
