#pragma once

#include <memory>
#include <string>
#include <vector>

#include <cairo.h>

#include <samples/layout.h>

/// A picture of colour indexes to draw on. Nothing is anti-aliased: each pixel has one of the colours drawn.
namespace samples {

using Line = std::vector<Pixel>;

enum class Typeface { kUpright, kBold, kItalic };
enum class Align { kLeft, kCentre, kRight };

/// Where and how a text stands; `at` lies on half the height of its capitals.
struct TextStyle {
    Pixel at;
    double size = 0;  ///< of the typeface, pixels
    int colour = 0;
    Typeface face = Typeface::kUpright;
    Align align = Align::kCentre;
};

class Canvas {
public:
    /// Throws std::runtime_error where the picture cannot be made.
    Canvas(int width, int height, int background);

    void fill(const Line& outline, int colour);
    void fill(const std::vector<Line>& outlines, int colour);  ///< islands of lakes stay unfilled: even-odd
    void stroke(const Line& line, int colour, double width);
    void stroke_closed(const Line& line, int colour, double width);
    void circle(Pixel middle, double radius, int colour, double width);
    void text(const std::string& text, const TextStyle& style);
    double text_width(const std::string& text, const TextStyle& style);

    /// From here to the end of the clip, only what lies inside the outline is drawn.
    void clip(const Line& outline);
    void end_clip();

    int width() const;
    int height() const;
    /// The colour indexes of one line.
    const unsigned char* line(int y) const;

private:
    void path(const Line& line, bool closed);
    void stroke_path(int colour, double width);

    std::unique_ptr<cairo_surface_t, void (*)(cairo_surface_t*)> surface_;
    std::unique_ptr<cairo_t, void (*)(cairo_t*)> cairo_;
};

}  // namespace samples
