#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <viewer/chart_list.h>
#include <viewer/painter.h>
#include <viewer/receivers.h>
#include <viewer/route_edit.h>
#include <viewer/scene.h>
#include <viewer/status.h>
#include <zellap10/plotter/file_stamp.h>
#include <zellap10/plotter/map_view.h>
#include <zellap10/plotter/printed_sheet.h>
#include <zellap10/plotter/quilt.h>
#include <zellap10/plotter/track.h>

namespace viewer {

enum class Button { kLeft, kRight };

/// What the viewer shows and what it does with mouse and keys. It draws into memory and knows no window
/// system.
class View {
public:
    struct Options {
        int workers = 1;                   ///< threads that decode charts, and that draw
        std::string picture_folder = ".";  ///< for pictures that a key saves
        std::string route_folder = ".";    ///< for routes without a path
        std::string route_path;            ///< a GPX file that is loaded if it exists; may be empty
        std::function<void()> on_change;   ///< called by any thread when there is something new to draw
        /// The clock by which a fix grows old.
        std::function<Track::Clock::time_point()> now = [] { return Track::Clock::now(); };
    };

    /// @param charts  charts and folders
    View(const std::vector<std::string>& charts, Options options);

    /// Takes 0.2 s at most, whatever is at work.
    ~View();
    View(const View&) = delete;
    View& operator=(const View&) = delete;

    /// Shows the ship and follows it.
    void set_receiver(std::unique_ptr<FixSource> receiver);

    /// @param window  in pixels, higher than the bar at its lower edge
    /// @param scale   of texts and lines
    void resize(ScreenSize window, double scale = 1);

    void press(Button button, ScreenPixel at, bool shift = false);
    void release(Button button, ScreenPixel at);
    void move(ScreenPixel at);
    void leave() { pointer_.reset(); }  ///< the pointer is no longer in the window
    void zoom(double steps);            ///< of the wheel, above 0 for a closer view

    /// @param name  as SDL gives it, such as "G", "Left" or "Keypad +"; other keys do nothing
    void press_key(const std::string& name);

    /// Whether keys are text, for type().
    bool wants_text() const { return prompt_.has_value(); }
    void type(const std::string& text);

    /// Saves the view as a PNG picture as soon as it is complete, which a later draw() finds.
    void save(const std::string& path);

    /// Why the last save failed; empty if it did not.
    const std::string& save_failure() const { return save_failure_; }

    /// Draws the view. It waits for nothing.
    ///
    /// @param bitmap  of the window's size; address and stride are multiples of 4
    void draw(const Bitmap& bitmap);

    /// Whether the last picture drawn was complete.
    bool is_complete() const { return complete_; }

    /// The milliseconds after which to draw again if nothing happens: for the age of a fix, or to draw a
    /// chart in full that has turned or changed its scale. Empty if the picture stays the same.
    std::optional<int> redraw_ms() const;

    /// Ends. A route that is not saved is saved under a new name.
    void quit();
    bool is_over() const { return over_; }
    const std::string& message() const { return message_; }

    const MapView& map() const { return map_; }
    const std::vector<Waypoint>& waypoints() const { return route_.waypoints(); }
    void set_route(std::vector<Waypoint> waypoints) { route_.replace(std::move(waypoints)); }

    /// Files that cannot be read or shown, with the reason.
    std::vector<std::string> problems() const;

private:
    enum class DragKind { kMove, kTurn, kWaypoint, kLeg };
    struct Drag {
        DragKind kind;
        ScreenPixel from;
        std::size_t index = 0;  // of a waypoint or leg
        bool moved = false;
    };
    struct Prompt {
        const char* question;
        std::string (View::*enter)(const std::string&);  // returns why it refuses a text
        std::string text;
        std::string reason;  // why the last text was refused
    };

    // Where it is.
    ScreenPixel middle() const;
    bool is_on_chart(ScreenPixel at) const { return at.y < map_.size().height; }
    Scene scene_at(ScreenPixel at) const;
    void show(Position centre, double metres_per_pixel);
    void show_charts(const Catalogue::Entries& entries);
    void show_all();
    void show_first();
    void pan(double right, double down);
    void turn(double degrees);

    // Charts.
    void look_for_charts();
    void step_detail(int step);
    void show_at_size_of(const CatalogueEntry& entry, const CatalogueEntry* finer, Position at);
    void toggle_sheet();
    bool open_sheet(const std::string& path);
    void show_next_bare_chart();

    // The route and what is typed.
    void drag_to(ScreenPixel at);
    void click(const Drag& drag);
    void undo();
    void clear_route();
    void ask(const char* question, std::string (View::*enter)(const std::string&), const std::string& text);
    void edit_prompt(const std::string& key);
    std::string go_to(const std::string& text);
    std::string load_route(const std::string& path);
    std::string save_route(const std::string& path);
    void adopt_route_file(const std::string& path);

    // The ship.
    void look_for_fixes();
    void follow();
    void toggle_course_up();

    void draw_lines(Painter& painter, const Scene& scene);
    void draw_sheet_lines(Painter& painter, const Box& window);
    void draw_hidden(Painter& painter, const Scene& scene);
    void draw_texts(Painter& painter);
    void draw_notices(Painter& painter);
    Status status();
    std::vector<std::string> pointer_lines(std::optional<Position> place);
    void save_picture(Painter& painter);

    const Options options_;
    ScreenSize window_;
    double scale_ = 1;
    MapView map_;
    ChartList list_;
    bool user_moved_ = false;
    std::unique_ptr<PrintedSheet> sheet_;  // null while the map is shown
    std::vector<const CatalogueEntry*> shown_;

    ColourScheme scheme_ = ColourScheme::kDay;
    bool shows_grid_ = false;
    bool shows_points_ = false;
    bool shows_outlines_ = false;
    bool shows_help_ = false;
    bool hides_problems_ = false;

    RouteEdit route_;
    bool route_mode_ = false;
    bool route_changed_ = false;  // since it was saved
    std::string route_path_;
    FileStamp route_stamp_;   // when that file was loaded or saved
    std::size_t target_ = 1;  // waypoint to which the ship sails; may be past the end
    Track track_;
    bool follows_ = false;
    bool course_up_ = false;
    bool lost_ = true;
    std::string receiver_status_;

    std::optional<ScreenPixel> pointer_;
    std::optional<Drag> drag_;
    std::optional<Prompt> prompt_;
    std::string message_;
    std::string save_path_;  // of a picture that is due
    std::string save_failure_;
    bool complete_ = false;
    bool draft_ = false;
    bool over_ = false;

    ChartLister lister_;
    std::unique_ptr<FixSource> receiver_;
    Quilt quilt_;  // ends first, since the others have been asked to stop
};

/// What mouse and keys do, in lines of text.
std::vector<std::string> help_lines();

}  // namespace viewer
