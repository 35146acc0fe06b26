#pragma once

#include <memory>
#include <string>
#include <vector>

#include <cairo.h>

#include <viewer/box.h>
#include <zellap10/plotter/colours.h>
#include <zellap10/plotter/viewport.h>

namespace viewer {

struct Pen {
    Argb colour = 0;
    double width = 1;
    double dash = 0;   ///< pixels on, and as many off; 0 for a solid line
    bool soft = true;  ///< at the edges; hard ones take a fifth of the time
};

/// The ground of a text, so that it can be read on any chart.
struct Paper {
    Argb ink = 0;
    Argb colour = 0xFFFFFF;
    double cover = 0.8;  ///< opacity, 0 to 1
};

enum class Typeface { kPlain, kBold, kFixed };

struct TextStyle {
    Paper paper;
    /// The point of the text that its place refers to: 0 is the left or upper edge, 1 the right or lower one.
    ScreenPixel anchor;
    double size = 13;
    Typeface face = Typeface::kPlain;
};

/// Which label gives way where two would overlap: the later one of this list.
enum class Rank { kWaypoint, kLeg, kPoint, kGrid };

/// Draws on a bitmap, with soft edges. Places are pixels of the bitmap; widths, radii and text sizes are
/// multiplied by a scale.
class Painter {
public:
    /// @param bitmap  must outlive the painter; its address and stride are multiples of 4
    /// @param scale   of a screen with small pixels, 1 or more
    /// @param soft    false for hard edges of lines whatever their pen
    explicit Painter(const Bitmap& bitmap, double scale = 1, bool soft = true);

    double scale() const { return scale_; }
    bool is_soft() const { return soft_; }

    void line(const std::vector<ScreenPixel>& pixels, const Pen& pen);
    void polygon(const std::vector<ScreenPixel>& corners, Argb colour, const Pen& edge);
    void circle(ScreenPixel middle, double radius, const Pen& pen);
    void box(const Box& box, Argb colour, double cover = 1);

    /// Lines of text, one below the other, on one piece of paper. No label is drawn over it.
    ///
    /// @return  what it covers
    Box text(ScreenPixel at, const std::vector<std::string>& lines, const TextStyle& style);

    /// A text that draw_labels draws, unless it would overlap another text or its place is clipped away.
    void label(ScreenPixel at, const std::string& text, const TextStyle& style, Rank rank);
    void draw_labels();

    /// No label is drawn over this box.
    void keep_free(const Box& box) { taken_.push_back(box); }

    /// Until end_clips, lines are drawn only inside a box or an outline, or only outside of an outline.
    void clip_to(const Box& box);
    void clip_to(const std::vector<ScreenPixel>& outline);
    void clip_out(const std::vector<ScreenPixel>& outline);
    void end_clips();

    /// The bytes of a PNG file of the bitmap; empty if memory runs out.
    std::string png();

private:
    struct Label {
        ScreenPixel at;
        std::string text;
        TextStyle style;
        Rank rank;
    };

    Box text_box(ScreenPixel at, const std::vector<std::string>& lines, const TextStyle& style);
    void path(const std::vector<ScreenPixel>& pixels);
    void set_colour(Argb colour, double cover = 1);
    void stroke(const Pen& pen);

    std::unique_ptr<cairo_surface_t, void (*)(cairo_surface_t*)> surface_;
    std::unique_ptr<cairo_t, void (*)(cairo_t*)> cairo_;
    ScreenSize size_;
    double scale_;
    bool soft_;
    std::vector<Label> labels_;
    std::vector<Box> taken_;
};

}  // namespace viewer
