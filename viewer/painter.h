#pragma once

#include <memory>
#include <string>
#include <vector>

#include <cairo.h>

#include <viewer/box.h>

namespace viewer {

struct Pen {
    Argb colour = 0;
    double width = 1;
    double dash = 0;  ///< pixels on, and as many off; 0 for a whole line
};

/// What texts stand on, so that they can be read on any chart.
struct Paper {
    Argb ink = 0;
    Argb colour = 0xFFFFFF;
    double cover = 0.8;  ///< of what lies beneath: 0 shows all of it, 1 nothing
};

/// Which place of a text is meant by where it stands: 0 is its left or upper edge, 1 its right or lower one.
struct Anchor {
    double x = 0;
    double y = 0;
};

enum class Typeface { kPlain, kBold, kFixed };

struct TextStyle {
    Paper paper;
    Anchor anchor;
    double size = 13;  ///< pixels
    Typeface face = Typeface::kPlain;
};

/// Draws on a picture, with soft edges. Every operation takes pixels of the window.
class Painter {
public:
    /// @param picture  must outlive the painter; its address and stride are multiples of 4
    explicit Painter(const Bitmap& picture);

    void line(const std::vector<ScreenPixel>& spots, const Pen& pen);
    void circle(ScreenPixel middle, double radius, const Pen& pen);
    void box(ScreenPixel upper_left, ScreenSize size, const Paper& paper);

    /// Lines of text, one below the other, on one piece of paper. They are UTF-8; other bytes are taken for
    /// Latin 1. Very long lines are cut.
    void text(ScreenPixel at, const std::vector<std::string>& lines, const TextStyle& style);
    /// What text() covers.
    ScreenSize text_size(const std::vector<std::string>& lines, const TextStyle& style);

    /// From here to the end of the clips, lines are drawn only inside a box or an outline, or only outside of
    /// an outline; clips add up. A text whose place they leave is drawn whole when they end, others are not
    /// drawn.
    void clip_to(const Box& box);
    void clip_to(const std::vector<ScreenPixel>& outline);
    void clip_out(const std::vector<ScreenPixel>& outline);
    void end_clips();

    /// Writes what is drawn so far to a PNG file; false where that fails.
    bool save(const std::string& path);

private:
    void path(const std::vector<ScreenPixel>& spots);
    void set_colour(Argb colour, double cover = 1);
    void stroke(const Pen& pen);
    void clip();

    struct Text {
        ScreenPixel at;
        std::vector<std::string> lines;
        TextStyle style;
    };

    std::unique_ptr<cairo_surface_t, void (*)(cairo_surface_t*)> surface_;
    std::unique_ptr<cairo_t, void (*)(cairo_t*)> cairo_;
    ScreenSize size_;
    bool clips_ = false;
    std::vector<Text> after_clips_;
};

}  // namespace viewer
